#pragma once

// Private to the maker library: the image view both forecast records hand out.

#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>

inline RefPtr<UIImageView> makeForecastIconView(const RefPtr<UIImage>& image, double side)
{
    auto view = UIImageView::create(CGRectMake(0, 0, side, side));
    view->setName("conditionImageView");
    view->setImage(image);
    view->setContentMode(UIViewContentModeScaleAspectFit);
    view->setUserInteractionEnabled(false);
    return view;
}
