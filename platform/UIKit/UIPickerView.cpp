#include "UIPickerView.h"

#include "NSAttributedString.h"
#include "RenderContext.h"
#include "TextLayout.h"
#include "UIFont.h"
#include "UIKitMessaging.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UIPickerView, UIView)
{
    c.method<&UIPickerView::setDataSource>("setDataSource:");
    c.method<&UIPickerView::setDelegate>("setDelegate:");
    c.method<&UIPickerView::reloadAllComponents>("reloadAllComponents");
    c.method<&UIPickerView::reloadComponent>("reloadComponent:");
    c.method<&UIPickerView::selectRow>("selectRow:inComponent:animated:");
    c.method<&UIPickerView::selectedRowInComponent>("selectedRowInComponent:");
    c.method<&UIPickerView::numberOfRowsInComponent>("numberOfRowsInComponent:");
    c.allocatable();
}

// A wheel holds a sensible number of rows; a data source answering more is
// cut, so that nothing sized by it can run away.
static constexpr long maximumCount = 100000;

void UIPickerView::setDataSource(NSObject* dataSource)
{
    m_dataSource = dataSource;
    m_loaded = false;
}

void UIPickerView::loadIfNeeded() const
{
    if (m_loaded)
        return;
    m_loaded = true;
    auto* self = const_cast<UIPickerView*>(this);
    long components = UIKitMessaging::ask<long>(m_dataSource.get(), OBJC_SEL("numberOfComponentsInPickerView:"), static_cast<NSObject*>(self)).value_or(0);
    components = std::clamp(components, 0L, maximumCount);
    m_rowCounts.assign(components, 0);
    m_selectedRows.resize(components, 0);
    for (long component = 0; component < components; ++component)
        loadComponent(component);
}

void UIPickerView::loadComponent(long component) const
{
    auto* self = const_cast<UIPickerView*>(this);
    long rows = UIKitMessaging::ask<long>(m_dataSource.get(), OBJC_SEL("pickerView:numberOfRowsInComponent:"), static_cast<NSObject*>(self), component).value_or(0);
    rows = std::clamp(rows, 0L, maximumCount);
    // The data source may have reloaded the picker while answering.
    if (component >= static_cast<long>(m_rowCounts.size()) || component >= static_cast<long>(m_selectedRows.size()))
        return;
    m_rowCounts[component] = rows;
    long& selected = m_selectedRows[component];
    selected = rows ? std::clamp(selected, 0L, rows - 1) : 0;
}

long UIPickerView::numberOfComponents() const
{
    loadIfNeeded();
    return static_cast<long>(m_rowCounts.size());
}

long UIPickerView::numberOfRowsInComponent(long component) const
{
    if (component < 0 || component >= numberOfComponents())
        return 0;
    return m_rowCounts[component];
}

void UIPickerView::reloadAllComponents()
{
    m_loaded = false;
    loadIfNeeded();
}

void UIPickerView::reloadComponent(long component)
{
    if (!m_loaded)
        return loadIfNeeded();
    if (component >= 0 && component < numberOfComponents())
        loadComponent(component);
}

void UIPickerView::selectRow(long row, long component, bool)
{
    long rows = numberOfRowsInComponent(component);
    if (rows > 0)
        m_selectedRows[component] = std::clamp(row, 0L, rows - 1);
}

long UIPickerView::selectedRowInComponent(long component) const
{
    return numberOfRowsInComponent(component) > 0 ? m_selectedRows[component] : -1;
}

StrongId UIPickerView::attributedTitleForRow(long row, long component) const
{
    auto* self = static_cast<NSObject*>(const_cast<UIPickerView*>(this));
    return UIKitMessaging::ask<StrongId>(m_delegate.get(), OBJC_SEL("pickerView:attributedTitleForRow:forComponent:"), self, row, component).value_or(nullptr);
}

std::string UIPickerView::titleForRow(long row, long component) const
{
    auto* self = static_cast<NSObject*>(const_cast<UIPickerView*>(this));
    return UIKitMessaging::ask<std::string>(m_delegate.get(), OBJC_SEL("pickerView:titleForRow:forComponent:"), self, row, component).value_or("");
}

bool UIPickerView::pickRow(long row, long component)
{
    if (row < 0 || row >= numberOfRowsInComponent(component))
        return false;
    RefPtr<UIPickerView> protect(this);
    m_selectedRows[component] = row;
    UIKitMessaging::tell(m_delegate.get(), OBJC_SEL("pickerView:didSelectRow:inComponent:"), static_cast<NSObject*>(this), row, component);
    return true;
}

void UIPickerView::drawContent(RenderContext& context) const
{
    long components = numberOfComponents();
    CGSize size = bounds().size;
    if (components <= 0 || size.width <= 0 || size.height <= 0)
        return;
    cairo_t* cr = context.cr;
    double middle = size.height / 2;
    double radius = size.height / 2;
    double componentWidth = size.width / static_cast<double>(components);
    // Only the rows that can face the viewer are asked for.
    long reach = static_cast<long>(std::ceil(M_PI / 2 * radius / rowHeight));

    TextStyle style;
    style.defaultFont = UIFont::systemFontOfSize(23.5);
    style.defaultColor = UIColor::blackColor();
    style.maxLines = 1;
    style.lineBreakMode = NSLineBreakByTruncatingTail;
    style.alignment = NSTextAlignmentCenter;
    style.width = componentWidth - 8;

    for (long component = 0; component < components; ++component) {
        long rows = m_rowCounts[component];
        long selected = m_selectedRows[component];
        double left = component * componentWidth + 4;
        for (long row = std::max(0L, selected - reach); row < std::min(rows, selected + reach + 1); ++row) {
            double angle = static_cast<double>(row - selected) * rowHeight / radius;
            if (std::abs(angle) >= M_PI / 2)
                continue;
            RefPtr<NSAttributedString> title = objc::castRef<NSAttributedString>(attributedTitleForRow(row, component));
            if (!title)
                title = NSAttributedString::create(titleForRow(row, component));
            if (title->string().empty())
                continue;
            double squeeze = std::cos(angle);
            TextLayout layout(*title, style, cr);
            cairo_save(cr);
            cairo_translate(cr, left, middle + radius * std::sin(angle));
            cairo_scale(cr, 1, squeeze);
            double alpha = row == selected ? 1 : 0.35 * squeeze * squeeze;
            cairo_push_group(cr);
            layout.draw(cr, { 0, -layout.size().height / 2 });
            cairo_pop_group_to_source(cr);
            cairo_paint_with_alpha(cr, alpha);
            cairo_restore(cr);
        }
    }

    if (m_showsSelectionIndicator) {
        cairo_set_source_rgba(cr, 0.6, 0.6, 0.62, 0.55);
        for (double y : { middle - rowHeight / 2, middle + rowHeight / 2 }) {
            cairo_rectangle(cr, 0, y - 0.25, size.width, 0.5);
            cairo_fill(cr);
        }
    }
}

void UIPickerView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    auto selected = nlohmann::json::array();
    for (long component = 0; component < numberOfComponents(); ++component)
        selected.push_back(selectedRowInComponent(component));
    node["selected"] = selected;
}
