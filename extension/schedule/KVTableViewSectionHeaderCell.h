#pragma once

#include <UIKit/UITableViewCell.h>

#include <string>

// The header of a schedule or app section: made anew for every request and
// never reused. It knows its table section and the identifier that keys the
// section's collapse state and colour ("event", "reminder" or an app's
// section identifier).
class KVTableViewSectionHeaderCell final : public UITableViewCell {
    OBJC_CLASS(KVTableViewSectionHeaderCell)
public:
    KVTableViewSectionHeaderCell(UITableViewCellStyle, std::string reuseIdentifier, long section, std::string identifier);

    long section() const { return m_section; }
    const std::string& identifier() const { return m_identifier; }

    void dumpProperties(nlohmann::json&) const override;

private:
    long m_section { 0 };
    std::string m_identifier;
};
