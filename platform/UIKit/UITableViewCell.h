#pragma once

#include "NSIndexPath.h"
#include "UIView.h"

#include <string>

class UITableView;

enum UITableViewCellStyle : int {
    UITableViewCellStyleDefault = 0,
    UITableViewCellStyleValue1 = 1,
    UITableViewCellStyleValue2 = 2,
    UITableViewCellStyleSubtitle = 3,
};

enum UITableViewCellSelectionStyle : int {
    UITableViewCellSelectionStyleNone = 0,
    UITableViewCellSelectionStyleBlue = 1,
    UITableViewCellSelectionStyleGray = 2,
    UITableViewCellSelectionStyleDefault = 3,
};

// One row of a table, as UIKit's UITableViewCell: a view with a background
// view behind everything it shows and a content view that fills it. Cells
// made with a reuse identifier go back to their table's pool when they
// scroll away, and come out again through dequeueReusableCellWithIdentifier:.
//
// The table tells a cell which row it shows while it is on screen; a cell
// that is not in a table (a section header made from a cell, for one) has
// no index path.
class UITableViewCell : public UIView {
    OBJC_CLASS(UITableViewCell)
public:
    UITableViewCell();
    UITableViewCell(UITableViewCellStyle, std::string reuseIdentifier);
    // `initWithStyle:reuseIdentifier:` for cells made by `alloc`; answers self.
    StrongId initWithStyleReuseIdentifier(long style, std::string reuseIdentifier);

    UITableViewCellStyle style() const { return m_style; }
    const std::string& reuseIdentifier() const { return m_reuseIdentifier; }
    // Called by the table before the cell is handed out again.
    virtual void prepareForReuse() { }

    UIView* contentView() const { return m_contentView.get(); }
    UIView* backgroundView() const { return m_backgroundView.get(); }
    // Placed behind the content view and kept filling the cell.
    void setBackgroundView(RefPtr<UIView>);

    UITableViewCellSelectionStyle selectionStyle() const { return m_selectionStyle; }
    void setSelectionStyle(UITableViewCellSelectionStyle style) { m_selectionStyle = style; }
    bool isSelected() const { return m_selected; }
    void setSelected(bool selected) { m_selected = selected; }

    // The row on show, set by the table while the cell is one of its rows.
    NSIndexPath* tableIndexPath() const { return m_tableIndexPath.get(); }
    void setTableIndexPath(RefPtr<NSIndexPath> indexPath) { m_tableIndexPath = std::move(indexPath); }

    void layoutSubviews() override;
    // A touch the cell's own recognisers left alone selects its row.
    void touchesEnded(UITouch*) override;
    void dumpProperties(nlohmann::json&) const override;

private:
    void setUp();
    UITableView* enclosingTableView() const;

    UITableViewCellStyle m_style { UITableViewCellStyleDefault };
    std::string m_reuseIdentifier;
    RefPtr<UIView> m_contentView;
    RefPtr<UIView> m_backgroundView;
    UITableViewCellSelectionStyle m_selectionStyle { UITableViewCellSelectionStyleDefault };
    bool m_selected { false };
    RefPtr<NSIndexPath> m_tableIndexPath;
};
