#pragma once

#include "NSIndexPath.h"
#include "UIScrollView.h"
#include "UITableViewCell.h"

#include <map>
#include <string>
#include <vector>

enum UITableViewStyle : int {
    UITableViewStylePlain = 0,
    UITableViewStyleGrouped = 1,
};

enum UITableViewCellSeparatorStyle : int {
    UITableViewCellSeparatorStyleNone = 0,
    UITableViewCellSeparatorStyleSingleLine = 1,
};

// A vertically scrolling list of sections of rows, as UIKit's UITableView.
// The data source and the delegate are asked through the runtime with
// UIKit's selectors:
//
//   numberOfSectionsInTableView:, tableView:numberOfRowsInSection:,
//   tableView:cellForRowAtIndexPath: (data source);
//   tableView:heightForRowAtIndexPath:, tableView:heightForHeaderInSection:,
//   tableView:heightForFooterInSection:, tableView:viewForHeaderInSection:,
//   tableView:viewForFooterInSection:, tableView:didSelectRowAtIndexPath:
//   (delegate, all optional).
//
// They travel with these types: the table as an object, sections and rows
// as `long`, heights as `double`, index paths as `NSIndexPath*`, cells and
// views answered as strong references.
//
// As UIKit does, the table works out the geometry of every section (counts
// and heights) once per reloadData, and asks for cells and header or footer
// views only for what intersects the visible bounds, at layout time. Looking
// a cell up (cellForRowAtIndexPath:) answers only cells on screen and never
// makes one. Views that scroll away are dropped, or pooled when they carry a
// reuse identifier.
//
// The data source and the delegate are not retained, as in UIKit: their
// owner keeps them alive while the table may ask them (they are usually its
// controller, which holds the table). Once gone they read as none.
//
// Simplified: separator lines are never drawn (separatorStyle is kept for
// callers), there are no table header or footer views, no editing, no
// index, and headers do not float in plain tables.
class UITableView : public UIScrollView {
    OBJC_CLASS(UITableView)
public:
    UITableView();
    UITableView(CGRect frame, UITableViewStyle);
    static RefPtr<UITableView> create(CGRect frame, UITableViewStyle style) { return make<UITableView>(frame, style); }

    UITableViewStyle style() const { return m_style; }
    NSObject* dataSource() const { return m_dataSource.get(); }
    // A new data source or delegate is asked at the next layout.
    void setDataSource(NSObject*);
    NSObject* tableDelegate() const { return m_delegate.get(); }
    void setTableDelegate(NSObject*);

    // Used when the delegate does not answer the height questions.
    double rowHeight() const { return m_rowHeight; }
    void setRowHeight(double height) { m_rowHeight = height; }
    double sectionHeaderHeight() const { return m_sectionHeaderHeight; }
    void setSectionHeaderHeight(double height) { m_sectionHeaderHeight = height; }
    double sectionFooterHeight() const { return m_sectionFooterHeight; }
    void setSectionFooterHeight(double height) { m_sectionFooterHeight = height; }

    UITableViewCellSeparatorStyle separatorStyle() const { return m_separatorStyle; }
    void setSeparatorStyle(UITableViewCellSeparatorStyle style) { m_separatorStyle = style; }
    UIColor* separatorColor() const { return m_separatorColor.get(); }
    void setSeparatorColor(RefPtr<UIColor> color) { m_separatorColor = std::move(color); }
    bool allowsSelection() const { return m_allowsSelection; }
    void setAllowsSelection(bool allows) { m_allowsSelection = allows; }

    // Forgets every cell and view on show, asks the data source and the
    // delegate for the geometry again, and lays the visible part out at the
    // next layout pass.
    void reloadData();
    long numberOfSections() const { return static_cast<long>(m_sections.size()); }
    // 0 for a section that does not exist.
    long numberOfRowsInSection(long section) const;
    CGRect rectForSection(long section) const;
    CGRect rectForHeaderInSection(long section) const;
    CGRect rectForFooterInSection(long section) const;
    CGRect rectForRowAtIndexPath(const NSIndexPath*) const;
    // Only what is on screen; null otherwise.
    UITableViewCell* cellForRowAtIndexPath(const NSIndexPath*) const;
    UIView* headerViewForSection(long section) const;
    RefPtr<NSIndexPath> indexPathForCell(const UITableViewCell*) const;
    std::vector<UITableViewCell*> visibleCells() const;
    // A pooled cell of that identifier, ready for reuse, or null.
    RefPtr<UITableViewCell> dequeueReusableCellWithIdentifier(const std::string&);

    NSIndexPath* indexPathForSelectedRow() const { return m_selectedIndexPath.get(); }
    void selectRowAtIndexPath(NSIndexPath*);
    void deselectRowAtIndexPath(NSIndexPath*);
    // A cell's touch ended without a recogniser taking it.
    void cellWasTapped(UITableViewCell*);

    // How many cells and header or footer views the data source and the
    // delegate have handed out since the table was made (for benchmarks and
    // tests of the on-screen rule).
    size_t cellsRequested() const { return m_cellsRequested; }
    size_t supplementaryViewsRequested() const { return m_supplementaryViewsRequested; }

    void layoutSubviews() override;
    void dumpProperties(nlohmann::json&) const override;

protected:
    // A table entering a window loads its data, as UIKit's does.
    void didMoveToWindow() override;

private:
    struct SectionGeometry {
        double top { 0 };
        double headerHeight { 0 };
        double footerHeight { 0 };
        // Offsets of the rows from the end of the header; one more than the
        // row count, the last being the rows' total height.
        std::vector<double> rowOffsets { 0 };
        long rowCount() const { return static_cast<long>(rowOffsets.size()) - 1; }
        double rowsHeight() const { return rowOffsets.back(); }
        double height() const { return headerHeight + rowsHeight() + footerHeight; }
    };
    enum class Supplementary { Header, Footer };
    using RowKey = std::pair<long, long>; // section, row

    void setUp();
    void computeGeometry();
    // The section that holds the content's point at y (0 above the first).
    long firstSectionAt(double y) const;
    void discardVisibleViews();
    void recycle(RefPtr<UITableViewCell>);
    void loadVisibleRows(CGRect visible);
    void loadVisibleSupplementaryViews(CGRect visible, Supplementary);
    RefPtr<UIView> requestSupplementaryView(long section, Supplementary);

    UITableViewStyle m_style { UITableViewStylePlain };
    // Weak, so that a data source freed first is never messaged.
    WeakPtr<NSObject> m_dataSource;
    WeakPtr<NSObject> m_delegate;
    double m_rowHeight { 44 };
    double m_sectionHeaderHeight { 22 };
    double m_sectionFooterHeight { 22 };
    UITableViewCellSeparatorStyle m_separatorStyle { UITableViewCellSeparatorStyleSingleLine };
    RefPtr<UIColor> m_separatorColor;
    bool m_allowsSelection { true };

    bool m_needsReload { true };
    std::vector<SectionGeometry> m_sections;
    std::map<RowKey, RefPtr<UITableViewCell>> m_visibleCells;
    std::map<long, RefPtr<UIView>> m_visibleHeaders;
    std::map<long, RefPtr<UIView>> m_visibleFooters;
    std::map<std::string, std::vector<RefPtr<UITableViewCell>>> m_reusePool;
    RefPtr<NSIndexPath> m_selectedIndexPath;
    size_t m_cellsRequested { 0 };
    size_t m_supplementaryViewsRequested { 0 };
};
