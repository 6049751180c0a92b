#pragma once

#include "NSTextAttachment.h"
#include "UIColor.h"
#include "UIFont.h"

#include <CoreGraphics/CGGeometry.h>
#include <Foundation/NSRange.h>
#include <objc/objc.h>

#include <string>
#include <vector>

class NSMutableAttributedString;

// The attribute names, for code that names attributes as UIKit does.
extern const char* const NSFontAttributeName;
extern const char* const NSForegroundColorAttributeName;
extern const char* const NSAttachmentAttributeName;

// The attributes of a run of text. A null attribute takes the default of
// whatever draws the text (a label's font and colour; Helvetica 12 in black
// otherwise, as in UIKit).
struct NSTextAttributes {
    RefPtr<UIFont> font {};
    RefPtr<UIColor> foregroundColor {};
    RefPtr<NSTextAttachment> attachment {};

    bool isEqual(const NSTextAttributes&) const;
};

// Text in runs that share attributes. Ranges and lengths count UTF-16 code
// units, as NSString does; the text itself is kept in UTF-8. An attachment
// stands in the text as one U+FFFC character.
class NSAttributedString : public NSObject {
    OBJC_CLASS(NSAttributedString)
public:
    struct Run {
        std::string text;
        NSTextAttributes attributes;
    };

    NSAttributedString() = default;
    explicit NSAttributedString(std::string string, NSTextAttributes attributes = {});
    static RefPtr<NSAttributedString> create(std::string string, NSTextAttributes attributes = {})
    {
        return make<NSAttributedString>(std::move(string), std::move(attributes));
    }
    static RefPtr<NSAttributedString> attributedStringWithAttachment(RefPtr<NSTextAttachment>);

    // The object replacement character that stands for an attachment.
    static constexpr const char* attachmentCharacter = "\xEF\xBF\xBC";

    const std::string& string() const { return m_string; }
    size_t length() const;
    const std::vector<Run>& runs() const { return m_runs; }
    NSTextAttributes attributesAtIndex(size_t index, NSRange* effectiveRange = nullptr) const;
    NSRange rangeOfString(const std::string&) const;
    bool isEqualToAttributedString(const NSAttributedString*) const;
    RefPtr<NSMutableAttributedString> mutableCopy() const;

    // Measurement, as UIKit's string drawing additions have it: the size on
    // one line per paragraph, and the size when wrapped at `size.width`.
    CGSize size() const;
    CGRect boundingRectWithSize(CGSize) const;

    std::string description() const override { return m_string; }

protected:
    // Splits the run that holds the UTF-16 offset, so that a run starts
    // there; answers the index of that run.
    size_t splitAt(size_t offset);
    // Merges neighbours with equal attributes, drops empty runs and rebuilds
    // the plain string.
    void normalize();

    std::vector<Run> m_runs;
    std::string m_string;
};

class NSMutableAttributedString final : public NSAttributedString {
    OBJC_CLASS(NSMutableAttributedString)
public:
    using NSAttributedString::NSAttributedString;
    static RefPtr<NSMutableAttributedString> create(std::string string = {}, NSTextAttributes attributes = {})
    {
        return make<NSMutableAttributedString>(std::move(string), std::move(attributes));
    }

    void appendAttributedString(const NSAttributedString*);
    void appendString(const std::string&, NSTextAttributes = {});
    void replaceCharactersInRange(NSRange, const std::string&);
    // Sets the non-null attributes of `attributes` over the range.
    void addAttributes(const NSTextAttributes& attributes, NSRange);
    // One attribute by its name; a value of the wrong class is ignored.
    void addAttribute(const std::string& name, NSObject* value, NSRange);
    void removeAttribute(const std::string& name, NSRange);
    void setAttributes(const NSTextAttributes&, NSRange);

private:
    template<typename Edit>
    void editRange(NSRange, Edit);
};

// UTF-16 code units in a UTF-8 string (a malformed byte counts as one).
size_t NSStringUTF16Length(const std::string&);
// The byte offset in a UTF-8 string of a UTF-16 offset (clamped to the end).
size_t NSStringByteOffset(const std::string&, size_t utf16Offset);
