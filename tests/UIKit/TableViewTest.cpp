// The table view: geometry worked out once per reload, cells made only for
// the rows on screen, look-ups that never make cells, reuse, scrolling and
// selection.

#include "EventsTestSupport.h"

#include <UIKit/UITableView.h>

#include <nlohmann/json.hpp>

namespace {

// A data source of `sections` sections of `rows` rows, 40 points each, with
// 26-point headers; it counts what it is asked.
class CountingSource final : public NSObject {
    OBJC_CLASS(CountingSource)
public:
    long sections { 3 };
    long rows { 100 };
    bool reuse { false };
    int heightQuestions { 0 };
    std::vector<std::pair<long, long>> selected;

    long numberOfSections(UITableView*) const { return sections; }
    long numberOfRows(UITableView*, long) const { return rows; }
    double rowHeight(UITableView*, NSIndexPath*)
    {
        ++heightQuestions;
        return 40;
    }
    double headerHeight(UITableView*, long) const { return 26; }
    double footerHeight(UITableView*, long) const { return 10; }
    RefPtr<UIView> header(UITableView*, long section) const
    {
        auto view = UIView::create();
        view->setTag(static_cast<int>(section));
        return view;
    }
    RefPtr<UITableViewCell> cell(UITableView* table, NSIndexPath*) const
    {
        if (reuse) {
            if (auto cell = table->dequeueReusableCellWithIdentifier("row"))
                return cell;
        }
        return make<UITableViewCell>(UITableViewCellStyleDefault, reuse ? "row" : "");
    }
    void didSelect(UITableView*, NSIndexPath* indexPath) { selected.emplace_back(indexPath->section(), indexPath->row()); }
};

OBJC_IMPLEMENT_CLASS(CountingSource, NSObject)
{
    c.method<&CountingSource::numberOfSections>("numberOfSectionsInTableView:");
    c.method<&CountingSource::numberOfRows>("tableView:numberOfRowsInSection:");
    c.method<&CountingSource::rowHeight>("tableView:heightForRowAtIndexPath:");
    c.method<&CountingSource::headerHeight>("tableView:heightForHeaderInSection:");
    c.method<&CountingSource::footerHeight>("tableView:heightForFooterInSection:");
    c.method<&CountingSource::header>("tableView:viewForHeaderInSection:");
    c.method<&CountingSource::cell>("tableView:cellForRowAtIndexPath:");
    c.method<&CountingSource::didSelect>("tableView:didSelectRowAtIndexPath:");
}

class TableView : public EventsTest {
protected:
    RefPtr<UITableView> makeTable()
    {
        auto table = UITableView::create(CGRectMake(0, 0, 320, 400), UITableViewStyleGrouped);
        table->setDataSource(source.get());
        table->setTableDelegate(source.get());
        window->addSubview(table.get());
        table->layoutIfNeeded();
        return table;
    }
    RefPtr<CountingSource> source = make<CountingSource>();
};

TEST_F(TableView, GeometryComesFromTheDelegateOncePerReload)
{
    auto table = makeTable();
    EXPECT_EQ(table->numberOfSections(), 3);
    EXPECT_EQ(table->contentSize().height, 3 * (26 + 100 * 40 + 10));
    EXPECT_EQ(source->heightQuestions, 300);
    table->setContentOffset(CGPointMake(0, 1000));
    table->layoutIfNeeded();
    EXPECT_EQ(source->heightQuestions, 300);
    CGRect row = table->rectForRowAtIndexPath(NSIndexPath::indexPathForRowInSection(2, 1).get());
    EXPECT_EQ(row.origin.y, 4036 + 26 + 80);
    EXPECT_EQ(table->rectForFooterInSection(0).origin.y, 4026);
}

TEST_F(TableView, OnlyRowsOnScreenGetCellsAndLookUpsNeverMakeOne)
{
    auto table = makeTable();
    // 400 points: the header (26) and the rows that start above 400.
    EXPECT_EQ(table->cellsRequested(), 10u);
    EXPECT_EQ(table->visibleCells().size(), 10u);
    EXPECT_EQ(table->supplementaryViewsRequested(), 1u);
    EXPECT_TRUE(table->cellForRowAtIndexPath(NSIndexPath::indexPathForRowInSection(0, 0).get()));
    EXPECT_FALSE(table->cellForRowAtIndexPath(NSIndexPath::indexPathForRowInSection(50, 1).get()));
    EXPECT_EQ(table->cellsRequested(), 10u);

    table->setContentOffset(CGPointMake(0, 4000));
    table->layoutIfNeeded();
    EXPECT_EQ(table->visibleCells().size(), 10u);
    EXPECT_TRUE(table->headerViewForSection(1));
    EXPECT_FALSE(table->headerViewForSection(0));
    EXPECT_TRUE(table->cellForRowAtIndexPath(NSIndexPath::indexPathForRowInSection(99, 0).get()));
}

TEST_F(TableView, CellsWithAnIdentifierAreReusedWhenTheyScrollAway)
{
    source->reuse = true;
    auto table = makeTable();
    UITableViewCell* first = table->cellForRowAtIndexPath(NSIndexPath::indexPathForRowInSection(0, 0).get());
    RefPtr<UITableViewCell> keep(first);
    table->setContentOffset(CGPointMake(0, 2000));
    table->layoutIfNeeded();
    bool reused = false;
    for (auto* cell : table->visibleCells())
        reused |= cell == first;
    EXPECT_TRUE(reused);
    auto path = table->indexPathForCell(first);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->section(), 0);
    EXPECT_GE(path->row(), 49);
}

TEST_F(TableView, AReloadWithLessContentKeepsTheOffsetInside)
{
    auto table = makeTable();
    table->setContentOffset(CGPointMake(0, 9000));
    source->rows = 2;
    table->reloadData();
    table->layoutIfNeeded();
    EXPECT_EQ(table->contentOffset().y, 0);
    EXPECT_EQ(table->visibleCells().size(), 6u);
    nlohmann::json node;
    table->dumpProperties(node);
    EXPECT_EQ(node["sections"][1], (nlohmann::json { { "header", 26 }, { "footer", 10 }, { "rows", 2 } }));
}

TEST_F(TableView, DraggingScrollsAndATapSelectsTheRow)
{
    auto table = makeTable();
    app().dragAt(CGPointMake(160, 300), 0, -200);
    advance(1);
    EXPECT_EQ(table->contentOffset().y, 200);
    app().tapAt(CGPointMake(160, 250));
    advance(1);
    ASSERT_EQ(source->selected.size(), 1u);
    EXPECT_EQ(source->selected[0], std::make_pair(0L, 10L));
    table->setAllowsSelection(false);
    app().tapAt(CGPointMake(160, 250));
    advance(1);
    EXPECT_EQ(source->selected.size(), 1u);
}

TEST_F(TableView, NoDataSourceMeansNoSections)
{
    auto table = UITableView::create(CGRectMake(0, 0, 320, 400), UITableViewStylePlain);
    window->addSubview(table.get());
    table->layoutIfNeeded();
    EXPECT_EQ(table->numberOfSections(), 0);
    EXPECT_EQ(table->numberOfRowsInSection(4), 0);
    EXPECT_EQ(table->rectForRowAtIndexPath(nullptr).size.height, 0);
}

} // namespace
