#pragma once

#include <UIKit/NSIndexPath.h>
#include <UIKit/UITableViewCell.h>

// A schedule or notification row. It keeps the index path it was built for:
// its tap handler finds the row's data again through it, at tap time.
class KVTableViewRowCell final : public UITableViewCell {
    OBJC_CLASS(KVTableViewRowCell)
public:
    KVTableViewRowCell(UITableViewCellStyle, std::string reuseIdentifier, RefPtr<NSIndexPath>);

    NSIndexPath* indexPath() const { return m_indexPath.get(); }

private:
    RefPtr<NSIndexPath> m_indexPath;
};
