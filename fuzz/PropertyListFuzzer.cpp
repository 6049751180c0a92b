// Feeds arbitrary bytes to the property-list reader, and writes back what it
// read in both formats: nothing may crash, hang or leak. Faster than the
// preferences harness (no file), so it reaches deeper into the parsers.
#include <Foundation/NSPropertyListSerialization.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t length)
{
    auto data = NSData::dataWithBytes(bytes, length);
    auto list = NSPropertyListSerialization::propertyListWithData(data.get());
    if (!list)
        return 0;
    for (auto format : { NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0 }) {
        if (auto written = NSPropertyListSerialization::dataWithPropertyList(list.get(), format))
            NSPropertyListSerialization::propertyListWithData(written.get());
    }
    return 0;
}
