#include "KVTableViewSectionHeaderCell.h"

#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(KVTableViewSectionHeaderCell, UITableViewCell)
{
    c.method<&KVTableViewSectionHeaderCell::section>("section");
    c.method<&KVTableViewSectionHeaderCell::identifier>("identifier");
}

KVTableViewSectionHeaderCell::KVTableViewSectionHeaderCell(UITableViewCellStyle style, std::string reuseIdentifier, long section, std::string identifier)
    : UITableViewCell(style, std::move(reuseIdentifier))
    , m_section(section)
    , m_identifier(std::move(identifier))
{
    setName("KVTableViewSectionHeaderCell");
}

void KVTableViewSectionHeaderCell::dumpProperties(nlohmann::json& node) const
{
    UITableViewCell::dumpProperties(node);
    node["section"] = m_section;
    node["identifier"] = m_identifier;
}
