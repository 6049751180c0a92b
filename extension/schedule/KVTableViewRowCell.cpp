#include "KVTableViewRowCell.h"

OBJC_IMPLEMENT_CLASS(KVTableViewRowCell, UITableViewCell)
{
    c.method<&KVTableViewRowCell::indexPath>("indexPath");
}

KVTableViewRowCell::KVTableViewRowCell(UITableViewCellStyle style, std::string reuseIdentifier, RefPtr<NSIndexPath> indexPath)
    : UITableViewCell(style, std::move(reuseIdentifier))
    , m_indexPath(std::move(indexPath))
{
    setName("KVTableViewRowCell");
}
