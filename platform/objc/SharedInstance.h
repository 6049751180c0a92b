#pragma once

#include "objc.h"

namespace objc {

// A class's shared instance, asked as the message `sharedInstance` to the
// class, so that a replacement of that class method sees every call. Null
// when the answer is not a T (a replacement may answer anything).
template<typename T>
T* sharedInstance()
{
    return send<T*>(T::classObject(), OBJC_SEL("sharedInstance"));
}

} // namespace objc
