#pragma once

#include <Foundation/NSString.h>
#include <UIKit/NSAttributedString.h>
#include <UIKit/UIFont.h>

// "H21 L12", its first "H" and first "L" in a smaller light font; the
// numbers keep the label's own font.
inline RefPtr<NSMutableAttributedString> weatherHighLowText(int high, int low, double letterSize)
{
    auto text = NSMutableAttributedString::create(NSString::format("H%d L%d", high, low));
    NSTextAttributes letters;
    letters.font = UIFont::fontWithName("HelveticaNeue-Light", letterSize);
    for (const char* letter : { "H", "L" }) {
        NSRange range = text->rangeOfString(letter);
        if (range.length)
            text->addAttributes(letters, range);
    }
    return text;
}
