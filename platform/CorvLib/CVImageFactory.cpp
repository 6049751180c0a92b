#include "CVImageFactory.h"

#include <UIKit/UIColor.h>
#include <UIKit/UIImage.h>

OBJC_IMPLEMENT_CLASS(CVImageFactory, NSObject)
{
    c.classMethod<&CVImageFactory::imageSetScale>("image:setScale:");
    c.classMethod<&CVImageFactory::imageSetColor>("image:setColor:");
}

RefPtr<UIImage> CVImageFactory::imageSetScale(UIImage* image, CGSize size)
{
    return image ? image->scaledToSize(size) : nullptr;
}

RefPtr<UIImage> CVImageFactory::imageSetColor(UIImage* image, UIColor* color)
{
    if (!image)
        return nullptr;
    return color ? image->tintedWithColor(color) : RefPtr<UIImage>(image);
}
