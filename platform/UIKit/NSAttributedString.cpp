#include "NSAttributedString.h"

#include "TextLayout.h"

#include <algorithm>

const char* const NSFontAttributeName = "NSFont";
const char* const NSForegroundColorAttributeName = "NSColor";
const char* const NSAttachmentAttributeName = "NSAttachment";

OBJC_IMPLEMENT_CLASS(NSAttributedString, NSObject)
{
    c.method<&NSAttributedString::string>("string");
    c.method<&NSAttributedString::length>("length");
    c.classMethod<&NSAttributedString::attributedStringWithAttachment>("attributedStringWithAttachment:");
}

OBJC_IMPLEMENT_CLASS(NSMutableAttributedString, NSAttributedString)
{
    c.method<&NSMutableAttributedString::appendAttributedString>("appendAttributedString:");
    c.method<&NSMutableAttributedString::addAttribute>("addAttribute:value:range:");
    c.method<&NSMutableAttributedString::replaceCharactersInRange>("replaceCharactersInRange:withString:");
    c.allocatable();
}

// Length in bytes of the UTF-8 sequence that starts with `lead`, and how many
// UTF-16 units it makes.
static void sequence(unsigned char lead, size_t& bytes, size_t& units)
{
    units = 1;
    if (lead < 0x80 || (lead & 0xC0) == 0x80)
        bytes = 1;
    else if (lead < 0xE0)
        bytes = 2;
    else if (lead < 0xF0)
        bytes = 3;
    else {
        bytes = 4;
        units = 2;
    }
}

size_t NSStringUTF16Length(const std::string& text)
{
    size_t length = 0;
    for (size_t i = 0; i < text.size();) {
        size_t bytes = 0;
        size_t units = 0;
        sequence(static_cast<unsigned char>(text[i]), bytes, units);
        i += bytes;
        length += units;
    }
    return length;
}

size_t NSStringByteOffset(const std::string& text, size_t utf16Offset)
{
    size_t units = 0;
    size_t i = 0;
    while (i < text.size() && units < utf16Offset) {
        size_t bytes = 0;
        size_t count = 0;
        sequence(static_cast<unsigned char>(text[i]), bytes, count);
        i = std::min(text.size(), i + bytes);
        units += count;
    }
    return i;
}

static bool sameObject(const UIFont* a, const UIFont* b) { return a == b || (a && a->isEqual(b)); }
static bool sameObject(const UIColor* a, const UIColor* b) { return a == b || (a && a->isEqual(b)); }

bool NSTextAttributes::isEqual(const NSTextAttributes& other) const
{
    return sameObject(font.get(), other.font.get()) && sameObject(foregroundColor.get(), other.foregroundColor.get()) && attachment == other.attachment;
}

NSAttributedString::NSAttributedString(std::string string, NSTextAttributes attributes)
{
    m_runs.push_back({ std::move(string), std::move(attributes) });
    normalize();
}

RefPtr<NSAttributedString> NSAttributedString::attributedStringWithAttachment(RefPtr<NSTextAttachment> attachment)
{
    return create(attachmentCharacter, NSTextAttributes { .attachment = std::move(attachment) });
}

size_t NSAttributedString::length() const { return NSStringUTF16Length(m_string); }

NSTextAttributes NSAttributedString::attributesAtIndex(size_t index, NSRange* effectiveRange) const
{
    size_t start = 0;
    for (auto& run : m_runs) {
        size_t length = NSStringUTF16Length(run.text);
        if (index < start + length) {
            if (effectiveRange)
                *effectiveRange = NSMakeRange(start, length);
            return run.attributes;
        }
        start += length;
    }
    if (effectiveRange)
        *effectiveRange = NSMakeRange(NSNotFound, 0);
    return {};
}

NSRange NSAttributedString::rangeOfString(const std::string& needle) const
{
    size_t at = needle.empty() ? std::string::npos : m_string.find(needle);
    if (at == std::string::npos)
        return NSMakeRange(NSNotFound, 0);
    return NSMakeRange(NSStringUTF16Length(m_string.substr(0, at)), NSStringUTF16Length(needle));
}

bool NSAttributedString::isEqualToAttributedString(const NSAttributedString* other) const
{
    if (!other || other->m_runs.size() != m_runs.size())
        return false;
    for (size_t i = 0; i < m_runs.size(); ++i) {
        if (m_runs[i].text != other->m_runs[i].text || !m_runs[i].attributes.isEqual(other->m_runs[i].attributes))
            return false;
    }
    return true;
}

RefPtr<NSMutableAttributedString> NSAttributedString::mutableCopy() const
{
    auto copy = make<NSMutableAttributedString>();
    copy->appendAttributedString(this);
    return copy;
}

CGSize NSAttributedString::size() const { return TextLayout::measure(*this, {}).size; }

CGRect NSAttributedString::boundingRectWithSize(CGSize size) const
{
    TextStyle style;
    style.width = size.width > 0 ? size.width : -1;
    style.height = size.height > 0 ? size.height : -1;
    return { {}, TextLayout::measure(*this, style).size };
}

size_t NSAttributedString::splitAt(size_t offset)
{
    size_t start = 0;
    for (size_t i = 0; i < m_runs.size(); ++i) {
        size_t length = NSStringUTF16Length(m_runs[i].text);
        if (offset == start)
            return i;
        if (offset < start + length) {
            size_t byte = NSStringByteOffset(m_runs[i].text, offset - start);
            Run tail { m_runs[i].text.substr(byte), m_runs[i].attributes };
            m_runs[i].text.resize(byte);
            m_runs.insert(m_runs.begin() + static_cast<long>(i) + 1, std::move(tail));
            return i + 1;
        }
        start += length;
    }
    return m_runs.size();
}

void NSAttributedString::normalize()
{
    std::vector<Run> merged;
    for (auto& run : m_runs) {
        if (run.text.empty())
            continue;
        if (!merged.empty() && merged.back().attributes.isEqual(run.attributes))
            merged.back().text += run.text;
        else
            merged.push_back(std::move(run));
    }
    m_runs = std::move(merged);
    m_string.clear();
    for (auto& run : m_runs)
        m_string += run.text;
}

template<typename Edit>
void NSMutableAttributedString::editRange(NSRange range, Edit edit)
{
    size_t length = this->length();
    size_t location = std::min(range.location, length);
    size_t end = std::min(length, location + std::min(range.length, length - location));
    size_t first = splitAt(location);
    size_t last = splitAt(end);
    for (size_t i = first; i < last; ++i)
        edit(m_runs[i].attributes);
    normalize();
}

void NSMutableAttributedString::appendAttributedString(const NSAttributedString* other)
{
    if (!other)
        return;
    for (auto& run : other->runs())
        m_runs.push_back(run);
    normalize();
}

void NSMutableAttributedString::appendString(const std::string& string, NSTextAttributes attributes)
{
    m_runs.push_back({ string, std::move(attributes) });
    normalize();
}

void NSMutableAttributedString::replaceCharactersInRange(NSRange range, const std::string& string)
{
    size_t length = this->length();
    size_t location = std::min(range.location, length);
    size_t end = std::min(length, location + std::min(range.length, length - location));
    size_t first = splitAt(location);
    size_t last = splitAt(end);
    // The new text takes the attributes of the first character it replaces,
    // or of the one before it when it replaces nothing.
    NSTextAttributes attributes;
    if (first < last)
        attributes = m_runs[first].attributes;
    else if (first > 0)
        attributes = m_runs[first - 1].attributes;
    else if (!m_runs.empty())
        attributes = m_runs.front().attributes;
    m_runs.erase(m_runs.begin() + static_cast<long>(first), m_runs.begin() + static_cast<long>(last));
    m_runs.insert(m_runs.begin() + static_cast<long>(first), Run { string, attributes });
    normalize();
}

void NSMutableAttributedString::addAttributes(const NSTextAttributes& attributes, NSRange range)
{
    editRange(range, [&](NSTextAttributes& a) {
        if (attributes.font)
            a.font = attributes.font;
        if (attributes.foregroundColor)
            a.foregroundColor = attributes.foregroundColor;
        if (attributes.attachment)
            a.attachment = attributes.attachment;
    });
}

void NSMutableAttributedString::addAttribute(const std::string& name, NSObject* value, NSRange range)
{
    NSTextAttributes attributes;
    if (name == NSFontAttributeName)
        attributes.font = objc::cast<UIFont>(value);
    else if (name == NSForegroundColorAttributeName)
        attributes.foregroundColor = objc::cast<UIColor>(value);
    else if (name == NSAttachmentAttributeName)
        attributes.attachment = objc::cast<NSTextAttachment>(value);
    addAttributes(attributes, range);
}

void NSMutableAttributedString::removeAttribute(const std::string& name, NSRange range)
{
    editRange(range, [&](NSTextAttributes& a) {
        if (name == NSFontAttributeName)
            a.font = nullptr;
        else if (name == NSForegroundColorAttributeName)
            a.foregroundColor = nullptr;
        else if (name == NSAttachmentAttributeName)
            a.attachment = nullptr;
    });
}

void NSMutableAttributedString::setAttributes(const NSTextAttributes& attributes, NSRange range)
{
    editRange(range, [&](NSTextAttributes& a) { a = attributes; });
}
