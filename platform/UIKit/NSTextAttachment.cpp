#include "NSTextAttachment.h"

OBJC_IMPLEMENT_CLASS(NSTextAttachment, NSObject)
{
    c.method<&NSTextAttachment::image>("image");
    c.method<&NSTextAttachment::setImage>("setImage:");
    c.method<&NSTextAttachment::bounds>("bounds");
    c.method<&NSTextAttachment::setBounds>("setBounds:");
    c.allocatable();
}

CGRect NSTextAttachment::effectiveBounds() const
{
    if (m_bounds.size.width > 0 || m_bounds.size.height > 0 || !m_image)
        return m_bounds;
    return { m_bounds.origin, m_image->size() };
}
