#include "EventsTestSupport.h"

#include <UIKit/UIButton.h>
#include <UIKit/UIPickerView.h>
#include <UIKit/UIScrollView.h>
#include <UIKit/UISlider.h>
#include <UIKit/UITapGestureRecognizer.h>

#include <nlohmann/json.hpp>

using Controls = EventsTest;
using Entries = std::vector<std::string>;

namespace {

// Two wheels of 5 and 3 rows.
class WheelSource : public NSObject {
    OBJC_CLASS(WheelSource)
public:
    long components(NSObject*) { return 2; }
    long rows(NSObject*, long component) { return component == 0 ? 5 : 3; }
    std::string title(NSObject*, long row, long component) { return std::to_string(component) + "/" + std::to_string(row); }
    void picked(NSObject*, long row, long component) { picks.emplace_back(component, row); }
    std::vector<std::pair<long, long>> picks;
};

// Answers with the wrong integer type: such methods are skipped.
class WrongSource : public NSObject {
    OBJC_CLASS(WrongSource)
public:
    int components(NSObject*) { return 2; }
};

} // namespace

OBJC_IMPLEMENT_CLASS(WheelSource, NSObject)
{
    c.method<&WheelSource::components>("numberOfComponentsInPickerView:");
    c.method<&WheelSource::rows>("pickerView:numberOfRowsInComponent:");
    c.method<&WheelSource::title>("pickerView:titleForRow:forComponent:");
    c.method<&WheelSource::picked>("pickerView:didSelectRow:inComponent:");
}

OBJC_IMPLEMENT_CLASS(WrongSource, NSObject) { c.method<&WrongSource::components>("numberOfComponentsInPickerView:"); }

TEST_F(Controls, AButtonActsOnTouchUpInsideOnly)
{
    auto button = addView<UIButton>(CGRectMake(100, 100, 60, 40));
    button->addTarget(log.get(), OBJC_SEL("button:"), UIControlEventTouchUpInside);
    button->addTarget(log.get(), OBJC_SEL("changed:"), UIControlEventTouchUpOutside);
    app().tapAt(centre(button.get()));
    EXPECT_EQ(log->entries, Entries { "button" });
    EXPECT_EQ(log->senders[0], button.get());
    EXPECT_FALSE(button->isHighlighted());

    // Lifted well away (beyond the finger margin): touch up outside.
    app().dragAt(centre(button.get()), 0, 150);
    EXPECT_EQ(log->entries.back(), "changed");

    button->setEnabled(false);
    app().tapAt(centre(button.get()));
    EXPECT_EQ(log->entries.size(), 2u);

    nlohmann::json node;
    button->dumpProperties(node);
    EXPECT_EQ(node["enabled"], false);
}

TEST_F(Controls, AButtonKeepsItsTapsFromAnAncestorsSingleTap)
{
    auto header = addView(CGRectMake(0, 0, 300, 100));
    header->addGestureRecognizer(make<UITapGestureRecognizer>(log.get(), OBJC_SEL("single:")).get());
    auto button = addView<UIButton>(CGRectMake(200, 20, 60, 60), header.get());
    button->addTarget(log.get(), OBJC_SEL("button:"), UIControlEventTouchUpInside);

    app().tapAt(centre(button.get()));
    EXPECT_EQ(log->entries, Entries { "button" });
    app().tapAt({ 50, 50 });
    EXPECT_EQ(log->entries.back(), "single:ended");
    // A disabled button lets the tap through to the header's recogniser.
    button->setEnabled(false);
    app().tapAt(centre(button.get()));
    EXPECT_EQ(log->entries, (Entries { "button", "single:ended", "single:ended" }));

    // A recogniser on the button itself takes the touch from the button.
    button->setEnabled(true);
    log->entries.clear();
    button->addGestureRecognizer(make<UITapGestureRecognizer>(log.get(), OBJC_SEL("twice:")).get());
    app().tapAt(centre(button.get()));
    EXPECT_EQ(log->entries, Entries { "double:ended" });
}

TEST_F(Controls, SlidingMovesTheValueAndSendsValueChanged)
{
    auto slider = addView<UISlider>(CGRectMake(20, 100, 228, 30));
    slider->addTarget(log.get(), OBJC_SEL("changed:"), UIControlEventValueChanged);
    slider->setValue(0.5f);
    EXPECT_TRUE(log->entries.empty());

    EXPECT_TRUE(app().slideAt(centre(slider.get()), 0.75f));
    EXPECT_FLOAT_EQ(slider->value(), 0.75f);
    EXPECT_FALSE(log->entries.empty());
    EXPECT_TRUE(app().slideAt(centre(slider.get()), 3.0f));
    EXPECT_FLOAT_EQ(slider->value(), 1.0f);

    slider->setMaximumValue(0.5f);
    EXPECT_FLOAT_EQ(slider->value(), 0.5f);
    nlohmann::json node;
    slider->dumpProperties(node);
    EXPECT_FLOAT_EQ(node["value"].get<float>(), 0.5f);

    auto cover = addView(CGRectMake(0, 0, 320, 300));
    EXPECT_FALSE(app().slideAt(centre(slider.get()), 0.1f));
    EXPECT_FLOAT_EQ(slider->value(), 0.5f);
}

TEST_F(Controls, APickerAsksItsDataSourceAndTellsItsDelegateOfPicks)
{
    auto source = make<WheelSource>();
    auto picker = addView<UIPickerView>(CGRectMake(0, 100, 320, 216));
    picker->setDataSource(source.get());
    picker->setDelegate(source.get());
    EXPECT_EQ(picker->numberOfComponents(), 2);
    EXPECT_EQ(picker->numberOfRowsInComponent(0), 5);
    EXPECT_EQ(picker->titleForRow(2, 1), "1/2");
    EXPECT_EQ(picker->attributedTitleForRow(2, 1), nullptr);

    picker->selectRow(9, 0, false);
    EXPECT_EQ(picker->selectedRowInComponent(0), 4);
    EXPECT_EQ(picker->selectedRowInComponent(7), -1);
    EXPECT_TRUE(source->picks.empty());

    EXPECT_TRUE(app().pickAt(centre(picker.get()), 1, 2));
    EXPECT_FALSE(app().pickAt(centre(picker.get()), 1, 3));
    EXPECT_EQ(source->picks, (std::vector<std::pair<long, long>> { { 1, 2 } }));
    nlohmann::json node;
    picker->dumpProperties(node);
    EXPECT_EQ(node["selected"], nlohmann::json({ 4, 2 }));

    auto wrong = make<WrongSource>();
    picker->setDataSource(wrong.get());
    EXPECT_EQ(picker->numberOfComponents(), 0);
}

TEST_F(Controls, DraggingAScrollViewStaysWithinTheContent)
{
    auto scroll = addView<UIScrollView>(CGRectMake(0, 100, 300, 100));
    scroll->setContentSize({ 600, 100 });
    app().dragAt({ 150, 150 }, -100, 0);
    EXPECT_EQ(scroll->contentOffset(), CGPointMake(100, 0));
    app().dragAt({ 150, 150 }, -1000, 0);
    EXPECT_EQ(scroll->contentOffset(), CGPointMake(300, 0));
    app().dragAt({ 150, 150 }, 1000, 40);
    EXPECT_EQ(scroll->contentOffset(), CGPointMake(0, 0));

    nlohmann::json node;
    scroll->dumpProperties(node);
    EXPECT_EQ(node["contentSize"], nlohmann::json({ 600, 100 }));
    EXPECT_EQ(node["contentOffset"], nlohmann::json({ 0, 0 }));
    EXPECT_EQ(node["gestures"], nlohmann::json::array());

    scroll->setPagingEnabled(true);
    app().dragAt({ 150, 150 }, -200, 0);
    EXPECT_EQ(scroll->contentOffset(), CGPointMake(300, 0));
}

TEST_F(Controls, AScrollViewDragTakesTheTouchFromTheViewsInside)
{
    auto parent = addView(CGRectMake(0, 100, 300, 100));
    parent->addGestureRecognizer(make<UIPanGestureRecognizer>(log.get(), OBJC_SEL("swipe:")).get());
    auto scroll = addView<UIScrollView>(CGRectMake(0, 0, 300, 100), parent.get());
    scroll->setContentSize({ 600, 100 });
    auto icon = addView(CGRectMake(0, 0, 100, 100), scroll.get());
    icon->addGestureRecognizer(make<UITapGestureRecognizer>(log.get(), OBJC_SEL("single:")).get());

    app().dragAt(centre(icon.get()), -60, 0);
    EXPECT_EQ(scroll->contentOffset(), CGPointMake(60, 0));
    EXPECT_TRUE(log->entries.empty());
    app().tapAt({ 30, 150 });
    EXPECT_EQ(log->entries, Entries { "single:ended" });

    // The content does not scroll vertically: that drag goes to the parent.
    log->entries.clear();
    app().dragAt({ 30, 150 }, 0, 40);
    EXPECT_EQ(scroll->contentOffset(), CGPointMake(60, 0));
    EXPECT_EQ(log->entries.front(), "swipe:began");
    EXPECT_EQ(log->entries.back(), "swipe:ended");
}
