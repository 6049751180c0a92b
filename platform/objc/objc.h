#pragma once

// The object runtime: classes by name, messages, hooks and instance variables.
#include "ClassBuilder.h"
#include "Message.h"
#include "NSObject.h"
#include "RefPtr.h"
#include "Runtime.h"
#include "Selector.h"
