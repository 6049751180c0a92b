#pragma once

#include "NSData.h"
#include "NSError.h"

#include <objc/objc.h>

enum NSPropertyListFormat : unsigned long {
    NSPropertyListXMLFormat_v1_0 = 100,
    NSPropertyListBinaryFormat_v1_0 = 200,
};

// Reads and writes property lists (XML or binary) as NSDictionary, NSArray,
// NSString, NSNumber, NSDate and NSData objects, through libplist.
//
// Input may come from anywhere, so reading never trusts it: it is limited to
// maximumLength bytes and maximumDepth levels of nesting, and a binary list's
// object graph is checked whole (offsets, references, no cycles, bounded
// size once shared objects are expanded) before libplist sees it. Integers
// are signed 64-bit, whatever the file's encoding; UIDs (used only by keyed
// archives) are dropped.
class NSPropertyListSerialization final : public NSObject {
    OBJC_CLASS(NSPropertyListSerialization)
public:
    static constexpr size_t maximumLength = 256 * 1024;
    static constexpr unsigned maximumDepth = 64;
    // Objects a binary list may expand to; an XML list within maximumLength
    // cannot hold more.
    static constexpr size_t maximumObjects = 100000;

    // Null, with an error, for anything that is not a property list within
    // the limits above. `format` receives the format that was read.
    static StrongId propertyListWithData(const NSData*, NSPropertyListFormat* format = nullptr, RefPtr<NSError>* error = nullptr);
    // Null, with an error, for objects a property list cannot hold (or nested
    // deeper than maximumDepth).
    static RefPtr<NSData> dataWithPropertyList(const NSObject*, NSPropertyListFormat, RefPtr<NSError>* error = nullptr);
};
