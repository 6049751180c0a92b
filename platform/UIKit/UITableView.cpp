#include "UITableView.h"

#include "UIKitMessaging.h"

#include <algorithm>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UITableView, UIScrollView)
{
    c.method<&UITableView::reloadData>("reloadData");
    c.method<&UITableView::numberOfSections>("numberOfSections");
    c.method<&UITableView::numberOfRowsInSection>("numberOfRowsInSection:");
    c.method<&UITableView::cellForRowAtIndexPath>("cellForRowAtIndexPath:");
    c.method<&UITableView::headerViewForSection>("headerViewForSection:");
    c.method<&UITableView::dataSource>("dataSource");
    c.method<&UITableView::setDataSource>("setDataSource:");
}

UITableView::UITableView() { setUp(); }

UITableView::UITableView(CGRect frame, UITableViewStyle style)
    : UIScrollView(frame)
    , m_style(style)
{
    setUp();
}

void UITableView::setUp()
{
    setBackgroundColor(m_style == UITableViewStyleGrouped ? UIColor::colorWithRed(0.937, 0.937, 0.957, 1) : UIColor::whiteColor());
    if (m_style == UITableViewStyleGrouped) {
        m_sectionHeaderHeight = 35;
        m_sectionFooterHeight = 35;
    }
    // Tables always let a vertical drag begin, and clip their rows to their
    // bounds, as UIKit's scroll views do.
    setAlwaysBounceVertical(true);
    setClipsToBounds(true);
}

void UITableView::setDataSource(NSObject* dataSource)
{
    m_dataSource = dataSource;
    m_needsReload = true;
    setNeedsLayout();
}

void UITableView::setTableDelegate(NSObject* delegate)
{
    m_delegate = delegate;
    m_needsReload = true;
    setNeedsLayout();
}

void UITableView::didMoveToWindow()
{
    UIScrollView::didMoveToWindow();
    if (window())
        setNeedsLayout();
}

long UITableView::numberOfRowsInSection(long section) const
{
    if (section < 0 || section >= numberOfSections())
        return 0;
    return m_sections[static_cast<size_t>(section)].rowCount();
}

void UITableView::reloadData()
{
    RefPtr<UITableView> protect(this);
    discardVisibleViews();
    m_selectedIndexPath = nullptr;
    computeGeometry();
    m_needsReload = false;
    // A shorter content keeps the offset within it.
    CGPoint maximum = maximumContentOffset();
    CGPoint offset = contentOffset();
    if (offset.y > maximum.y)
        setContentOffset(CGPointMake(offset.x, maximum.y));
    setNeedsLayout();
}

void UITableView::computeGeometry()
{
    NSObject* self = this;
    m_sections.clear();
    long sectionCount = UIKitMessaging::ask<long>(m_dataSource.get(), OBJC_SEL("numberOfSectionsInTableView:"), self).value_or(m_dataSource ? 1 : 0);
    sectionCount = std::max(0L, sectionCount);
    m_sections.reserve(static_cast<size_t>(sectionCount));
    double top = 0;
    for (long section = 0; section < sectionCount; ++section) {
        SectionGeometry geometry;
        geometry.top = top;
        geometry.headerHeight = std::max(0.0, UIKitMessaging::ask<double>(m_delegate.get(), OBJC_SEL("tableView:heightForHeaderInSection:"), self, section).value_or(m_sectionHeaderHeight));
        geometry.footerHeight = std::max(0.0, UIKitMessaging::ask<double>(m_delegate.get(), OBJC_SEL("tableView:heightForFooterInSection:"), self, section).value_or(m_sectionFooterHeight));
        long rows = std::max(0L, UIKitMessaging::ask<long>(m_dataSource.get(), OBJC_SEL("tableView:numberOfRowsInSection:"), self, section).value_or(0));
        geometry.rowOffsets.reserve(static_cast<size_t>(rows) + 1);
        bool asksHeights = UIKitMessaging::lookUp(m_delegate.get(), OBJC_SEL("tableView:heightForRowAtIndexPath:"), typeid(objc::CanonicalIMP<double, NSObject*, NSObject*>)) == UIKitMessaging::Lookup::Matches;
        double y = 0;
        for (long row = 0; row < rows; ++row) {
            double height = m_rowHeight;
            if (asksHeights) {
                auto indexPath = NSIndexPath::indexPathForRowInSection(row, section);
                height = std::max(0.0, objc::send<double>(m_delegate.get(), OBJC_SEL("tableView:heightForRowAtIndexPath:"), self, static_cast<NSObject*>(indexPath.get())));
            }
            y += height;
            geometry.rowOffsets.push_back(y);
        }
        top += geometry.height();
        m_sections.push_back(std::move(geometry));
    }
    setContentSize(CGSizeMake(bounds().size.width, top));
}

void UITableView::discardVisibleViews()
{
    for (auto& [key, cell] : m_visibleCells)
        recycle(cell);
    m_visibleCells.clear();
    for (auto* views : { &m_visibleHeaders, &m_visibleFooters }) {
        for (auto& [section, view] : *views)
            view->removeFromSuperview();
        views->clear();
    }
}

void UITableView::recycle(RefPtr<UITableViewCell> cell)
{
    cell->removeFromSuperview();
    cell->setTableIndexPath(nullptr);
    if (!cell->reuseIdentifier().empty())
        m_reusePool[cell->reuseIdentifier()].push_back(std::move(cell));
}

RefPtr<UITableViewCell> UITableView::dequeueReusableCellWithIdentifier(const std::string& identifier)
{
    auto it = m_reusePool.find(identifier);
    if (it == m_reusePool.end() || it->second.empty())
        return nullptr;
    RefPtr<UITableViewCell> cell = std::move(it->second.back());
    it->second.pop_back();
    cell->setSelected(false);
    objc::send(cell.get(), OBJC_SEL("prepareForReuse"));
    return cell;
}

CGRect UITableView::rectForSection(long section) const
{
    if (section < 0 || section >= numberOfSections())
        return CGRectZero;
    const auto& geometry = m_sections[static_cast<size_t>(section)];
    return CGRectMake(0, geometry.top, bounds().size.width, geometry.height());
}

CGRect UITableView::rectForHeaderInSection(long section) const
{
    if (section < 0 || section >= numberOfSections())
        return CGRectZero;
    const auto& geometry = m_sections[static_cast<size_t>(section)];
    return CGRectMake(0, geometry.top, bounds().size.width, geometry.headerHeight);
}

CGRect UITableView::rectForFooterInSection(long section) const
{
    if (section < 0 || section >= numberOfSections())
        return CGRectZero;
    const auto& geometry = m_sections[static_cast<size_t>(section)];
    return CGRectMake(0, geometry.top + geometry.headerHeight + geometry.rowsHeight(), bounds().size.width, geometry.footerHeight);
}

CGRect UITableView::rectForRowAtIndexPath(const NSIndexPath* indexPath) const
{
    if (!indexPath || indexPath->row() < 0 || indexPath->row() >= numberOfRowsInSection(indexPath->section()))
        return CGRectZero;
    const auto& geometry = m_sections[static_cast<size_t>(indexPath->section())];
    auto row = static_cast<size_t>(indexPath->row());
    double y = geometry.top + geometry.headerHeight + geometry.rowOffsets[row];
    return CGRectMake(0, y, bounds().size.width, geometry.rowOffsets[row + 1] - geometry.rowOffsets[row]);
}

UITableViewCell* UITableView::cellForRowAtIndexPath(const NSIndexPath* indexPath) const
{
    if (!indexPath)
        return nullptr;
    auto it = m_visibleCells.find({ indexPath->section(), indexPath->row() });
    return it == m_visibleCells.end() ? nullptr : it->second.get();
}

UIView* UITableView::headerViewForSection(long section) const
{
    auto it = m_visibleHeaders.find(section);
    return it == m_visibleHeaders.end() ? nullptr : it->second.get();
}

RefPtr<NSIndexPath> UITableView::indexPathForCell(const UITableViewCell* cell) const
{
    for (auto& [key, visible] : m_visibleCells) {
        if (visible.get() == cell)
            return NSIndexPath::indexPathForRowInSection(key.second, key.first);
    }
    return nullptr;
}

std::vector<UITableViewCell*> UITableView::visibleCells() const
{
    std::vector<UITableViewCell*> cells;
    cells.reserve(m_visibleCells.size());
    for (auto& [key, cell] : m_visibleCells)
        cells.push_back(cell.get());
    return cells;
}

void UITableView::selectRowAtIndexPath(NSIndexPath* indexPath)
{
    if (m_selectedIndexPath)
        deselectRowAtIndexPath(m_selectedIndexPath.get());
    m_selectedIndexPath = indexPath;
    if (auto* cell = cellForRowAtIndexPath(indexPath))
        cell->setSelected(true);
}

void UITableView::deselectRowAtIndexPath(NSIndexPath* indexPath)
{
    if (auto* cell = cellForRowAtIndexPath(indexPath))
        cell->setSelected(false);
    if (m_selectedIndexPath && m_selectedIndexPath->isEqual(indexPath))
        m_selectedIndexPath = nullptr;
}

void UITableView::cellWasTapped(UITableViewCell* cell)
{
    if (!m_allowsSelection || !cell || !cell->tableIndexPath())
        return;
    RefPtr<UITableView> protect(this);
    RefPtr<NSIndexPath> indexPath = cell->tableIndexPath();
    selectRowAtIndexPath(indexPath.get());
    UIKitMessaging::tell(m_delegate.get(), OBJC_SEL("tableView:didSelectRowAtIndexPath:"), static_cast<NSObject*>(this), static_cast<NSObject*>(indexPath.get()));
}

void UITableView::layoutSubviews()
{
    RefPtr<UITableView> protect(this);
    if (m_needsReload)
        reloadData();
    if (contentSize().width != bounds().size.width)
        setContentSize(CGSizeMake(bounds().size.width, contentSize().height));
    CGRect visible = bounds();
    loadVisibleSupplementaryViews(visible, Supplementary::Header);
    loadVisibleSupplementaryViews(visible, Supplementary::Footer);
    loadVisibleRows(visible);
}

long UITableView::firstSectionAt(double y) const
{
    auto after = std::upper_bound(m_sections.begin(), m_sections.end(), y, [](double top, const SectionGeometry& geometry) { return top < geometry.top; });
    return after == m_sections.begin() ? 0 : (after - m_sections.begin()) - 1;
}

static bool intersectsVertically(CGRect rect, CGRect visible)
{
    return rect.size.height > 0 && rect.origin.y < CGRectGetMaxY(visible) && CGRectGetMaxY(rect) > visible.origin.y;
}

void UITableView::loadVisibleRows(CGRect visible)
{
    // Rows that left the visible bounds go first, so that their cells can be
    // reused for the rows that come in.
    for (auto it = m_visibleCells.begin(); it != m_visibleCells.end();) {
        auto indexPath = NSIndexPath::indexPathForRowInSection(it->first.second, it->first.first);
        if (intersectsVertically(rectForRowAtIndexPath(indexPath.get()), visible)) {
            ++it;
            continue;
        }
        recycle(std::move(it->second));
        it = m_visibleCells.erase(it);
    }

    double visibleTop = visible.origin.y;
    double visibleBottom = CGRectGetMaxY(visible);
    for (auto section = m_sections.begin() + firstSectionAt(visibleTop); section != m_sections.end() && section->top < visibleBottom; ++section) {
        long sectionIndex = section - m_sections.begin();
        double rowsTop = section->top + section->headerHeight;
        // The first row whose bottom lies below the top of the visible bounds.
        auto first = std::upper_bound(section->rowOffsets.begin() + 1, section->rowOffsets.end(), visibleTop - rowsTop);
        for (auto end = first; end != section->rowOffsets.end(); ++end) {
            long row = (end - section->rowOffsets.begin()) - 1;
            double rowTop = rowsTop + *(end - 1);
            if (rowTop >= visibleBottom)
                break;
            CGRect frame = CGRectMake(0, rowTop, visible.size.width, *end - *(end - 1));
            if (frame.size.height <= 0)
                continue;
            RowKey key { sectionIndex, row };
            auto existing = m_visibleCells.find(key);
            if (existing != m_visibleCells.end()) {
                existing->second->setFrame(frame);
                continue;
            }
            auto indexPath = NSIndexPath::indexPathForRowInSection(row, sectionIndex);
            ++m_cellsRequested;
            StrongId answer = objc::send<StrongId>(m_dataSource.get(), OBJC_SEL("tableView:cellForRowAtIndexPath:"), static_cast<NSObject*>(this), static_cast<NSObject*>(indexPath.get()));
            RefPtr<UITableViewCell> cell = objc::castRef<UITableViewCell>(answer);
            // UIKit raises on a missing cell; an empty row is kinder.
            if (!cell)
                cell = make<UITableViewCell>();
            cell->setTableIndexPath(indexPath);
            cell->setFrame(frame);
            cell->setSelected(m_selectedIndexPath && m_selectedIndexPath->isEqual(indexPath.get()));
            // Cells stay behind the header and footer views, in the order
            // they came.
            insertSubviewAtIndex(cell.get(), m_visibleCells.size());
            m_visibleCells.emplace(key, std::move(cell));
        }
    }
}

RefPtr<UIView> UITableView::requestSupplementaryView(long section, Supplementary kind)
{
    objc::SEL selector = kind == Supplementary::Header ? OBJC_SEL("tableView:viewForHeaderInSection:") : OBJC_SEL("tableView:viewForFooterInSection:");
    auto view = UIKitMessaging::ask<StrongId>(m_delegate.get(), selector, static_cast<NSObject*>(this), section);
    if (!view)
        return nullptr;
    ++m_supplementaryViewsRequested;
    return objc::castRef<UIView>(*view);
}

void UITableView::loadVisibleSupplementaryViews(CGRect visible, Supplementary kind)
{
    auto& views = kind == Supplementary::Header ? m_visibleHeaders : m_visibleFooters;
    auto rectFor = [&](long section) { return kind == Supplementary::Header ? rectForHeaderInSection(section) : rectForFooterInSection(section); };
    for (auto it = views.begin(); it != views.end();) {
        if (intersectsVertically(rectFor(it->first), visible)) {
            ++it;
            continue;
        }
        it->second->removeFromSuperview();
        it = views.erase(it);
    }
    for (long section = firstSectionAt(visible.origin.y); section < numberOfSections() && m_sections[static_cast<size_t>(section)].top < CGRectGetMaxY(visible); ++section) {
        CGRect rect = rectFor(section);
        if (!intersectsVertically(rect, visible))
            continue;
        if (auto existing = views.find(section); existing != views.end()) {
            existing->second->setFrame(rect);
            continue;
        }
        // A section without a view is asked again at the next layout, as
        // UIKit does; only sections on screen are asked.
        RefPtr<UIView> view = requestSupplementaryView(section, kind);
        if (!view)
            continue;
        view->setFrame(rect);
        addSubview(view.get());
        views.emplace(section, std::move(view));
    }
}

void UITableView::dumpProperties(nlohmann::json& node) const
{
    UIScrollView::dumpProperties(node);
    auto sections = nlohmann::json::array();
    for (auto& geometry : m_sections)
        sections.push_back({ { "header", geometry.headerHeight }, { "footer", geometry.footerHeight }, { "rows", geometry.rowCount() } });
    node["sections"] = sections;
}
