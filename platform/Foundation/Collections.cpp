// Runtime descriptions of the small value classes that have no code of their own.
#include "NSArray.h"
#include "NSData.h"
#include "NSDictionary.h"
#include "NSError.h"

OBJC_IMPLEMENT_CLASS(NSArray, NSObject)
{
    c.method<&NSArray::count>("count");
    c.method<&NSArray::objectAtIndex>("objectAtIndex:");
}

OBJC_IMPLEMENT_CLASS(NSDictionary, NSObject)
{
    c.method<&NSDictionary::count>("count");
    c.method<&NSDictionary::objectForKey>("objectForKey:");
}

OBJC_IMPLEMENT_CLASS(NSData, NSObject) { c.method<&NSData::length>("length"); }

OBJC_IMPLEMENT_CLASS(NSError, NSObject)
{
    c.method<&NSError::code>("code");
    c.method<&NSError::localizedDescription>("localizedDescription");
}
