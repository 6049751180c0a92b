#include "SpringBoard.h"

OBJC_IMPLEMENT_CLASS(SpringBoard, UIApplication)
{
    c.method<&SpringBoard::getSpringBoardOrientation>("_getSpringBoardOrientation");
}
