#include "UITableViewCell.h"

#include "UITableView.h"

#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UITableViewCell, UIView)
{
    c.method<&UITableViewCell::initWithStyleReuseIdentifier>("initWithStyle:reuseIdentifier:");
    c.method<&UITableViewCell::contentView>("contentView");
    c.method<&UITableViewCell::backgroundView>("backgroundView");
    c.method<&UITableViewCell::setBackgroundView>("setBackgroundView:");
    c.method<&UITableViewCell::prepareForReuse>("prepareForReuse");
    c.allocatable();
}

UITableViewCell::UITableViewCell() { setUp(); }

UITableViewCell::UITableViewCell(UITableViewCellStyle style, std::string reuseIdentifier)
    : m_style(style)
    , m_reuseIdentifier(std::move(reuseIdentifier))
{
    setUp();
}

StrongId UITableViewCell::initWithStyleReuseIdentifier(long style, std::string reuseIdentifier)
{
    m_style = static_cast<UITableViewCellStyle>(style);
    m_reuseIdentifier = std::move(reuseIdentifier);
    return StrongId(this);
}

void UITableViewCell::setUp()
{
    setBackgroundColor(UIColor::whiteColor());
    m_contentView = make<UIView>(bounds());
    m_contentView->setName("contentView");
    m_contentView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    addSubview(m_contentView.get());
}

void UITableViewCell::setBackgroundView(RefPtr<UIView> view)
{
    if (m_backgroundView)
        m_backgroundView->removeFromSuperview();
    m_backgroundView = std::move(view);
    if (!m_backgroundView)
        return;
    m_backgroundView->setFrame(bounds());
    insertSubviewAtIndex(m_backgroundView.get(), 0);
}

void UITableViewCell::layoutSubviews()
{
    if (m_backgroundView)
        m_backgroundView->setFrame(bounds());
    m_contentView->setFrame(bounds());
}

UITableView* UITableViewCell::enclosingTableView() const
{
    for (UIView* view = superview(); view; view = view->superview()) {
        if (auto* table = dynamic_cast<UITableView*>(view))
            return table;
    }
    return nullptr;
}

void UITableViewCell::touchesEnded(UITouch* touch)
{
    UITableView* table = m_tableIndexPath ? enclosingTableView() : nullptr;
    if (!table)
        return UIView::touchesEnded(touch);
    table->cellWasTapped(this);
}

void UITableViewCell::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    if (m_tableIndexPath) {
        node["section"] = m_tableIndexPath->section();
        node["row"] = m_tableIndexPath->row();
    }
    if (!m_reuseIdentifier.empty())
        node["identifier"] = m_reuseIdentifier;
}
