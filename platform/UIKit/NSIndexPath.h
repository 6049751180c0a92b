#pragma once

#include <objc/objc.h>

// A row of a table: its section and its row in the section, as UIKit's
// NSIndexPath (indexPathForRow:inSection:). Immutable.
class NSIndexPath final : public NSObject {
    OBJC_CLASS(NSIndexPath)
public:
    NSIndexPath() = default;
    NSIndexPath(long row, long section)
        : m_row(row)
        , m_section(section)
    {
    }
    static RefPtr<NSIndexPath> indexPathForRowInSection(long row, long section) { return make<NSIndexPath>(row, section); }

    long row() const { return m_row; }
    long section() const { return m_section; }
    bool isEqual(const NSIndexPath* other) const { return other && other->m_row == m_row && other->m_section == m_section; }
    std::string description() const override;

private:
    long m_row { 0 };
    long m_section { 0 };
};
