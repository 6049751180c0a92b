#include "NSPropertyListSerialization.h"

#include "NSArray.h"
#include "NSDate.h"
#include "NSDictionary.h"
#include "NSFileManager.h"
#include "NSNumber.h"
#include "NSString.h"
#include "PropertyListChecks.h"

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

OBJC_IMPLEMENT_CLASS(NSPropertyListSerialization, NSObject) { }

namespace {

struct PlistDeleter {
    void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

constexpr PropertyListChecks::Limits limits { NSPropertyListSerialization::maximumDepth, NSPropertyListSerialization::maximumObjects };

StrongId objectFromNode(plist_t node, unsigned depth);

RefPtr<NSDictionary> dictionaryFromNode(plist_t node, unsigned depth)
{
    auto dictionary = NSDictionary::create();
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    if (!iterator)
        return dictionary;
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator, &key, &value);
        if (!key)
            break;
        if (auto object = objectFromNode(value, depth + 1))
            dictionary->setObject(std::move(object), key);
        std::free(key);
    }
    std::free(iterator);
    return dictionary;
}

StrongId objectFromNode(plist_t node, unsigned depth)
{
    if (!node || depth > NSPropertyListSerialization::maximumDepth)
        return nullptr;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return NSNumber::numberWithBool(value);
    }
    case PLIST_UINT: {
        // libplist keeps every integer unsigned: negative ones come back as
        // their two's-complement bit pattern.
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return NSNumber::numberWithLongLong(static_cast<int64_t>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return NSNumber::numberWithDouble(value);
    }
    case PLIST_STRING:
    case PLIST_KEY: {
        const char* text = plist_get_string_ptr(node, nullptr);
        return NSString::create(text ? text : "");
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds + microseconds / 1e6);
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return NSData::dataWithBytes(bytes, bytes ? length : 0);
    }
    case PLIST_ARRAY: {
        auto array = NSArray::create();
        uint32_t count = plist_array_get_size(node);
        for (uint32_t i = 0; i < count; ++i) {
            if (auto object = objectFromNode(plist_array_get_item(node, i), depth + 1))
                array->addObject(std::move(object));
        }
        return array;
    }
    case PLIST_DICT:
        return dictionaryFromNode(node, depth);
    default:
        return nullptr;
    }
}

PlistPtr nodeFromObject(const NSObject* object, unsigned depth, std::string& failure)
{
    if (depth > NSPropertyListSerialization::maximumDepth) {
        failure = "nested too deeply";
        return nullptr;
    }
    if (!object) {
        failure = "null in a collection";
        return nullptr;
    }
    if (auto* dictionary = dynamic_cast<const NSDictionary*>(object)) {
        PlistPtr node(plist_new_dict());
        for (auto& [key, value] : dictionary->entries()) {
            auto child = nodeFromObject(value.get(), depth + 1, failure);
            if (!child)
                return nullptr;
            plist_dict_set_item(node.get(), key.c_str(), child.release());
        }
        return node;
    }
    if (auto* array = dynamic_cast<const NSArray*>(object)) {
        PlistPtr node(plist_new_array());
        for (auto& value : array->objects()) {
            auto child = nodeFromObject(value.get(), depth + 1, failure);
            if (!child)
                return nullptr;
            plist_array_append_item(node.get(), child.release());
        }
        return node;
    }
    if (auto* string = dynamic_cast<const NSString*>(object))
        return PlistPtr(plist_new_string(string->string().c_str()));
    if (auto* number = dynamic_cast<const NSNumber*>(object)) {
        switch (number->kind()) {
        case NSNumber::Kind::Bool:
            return PlistPtr(plist_new_bool(number->boolValue()));
        case NSNumber::Kind::Real:
            return PlistPtr(plist_new_real(number->doubleValue()));
        case NSNumber::Kind::Unsigned:
        case NSNumber::Kind::Integer:
            return PlistPtr(plist_new_uint(static_cast<uint64_t>(number->longLongValue())));
        }
    }
    if (auto* date = dynamic_cast<const NSDate*>(object)) {
        // This libplist keeps dates as 32-bit seconds since 2001.
        double seconds = std::floor(date->timeIntervalSinceReferenceDate());
        if (!(seconds >= INT32_MIN && seconds <= INT32_MAX)) {
            failure = "date out of range";
            return nullptr;
        }
        auto microseconds = static_cast<int32_t>((date->timeIntervalSinceReferenceDate() - seconds) * 1e6);
        return PlistPtr(plist_new_date(static_cast<int32_t>(seconds), microseconds));
    }
    if (auto* data = dynamic_cast<const NSData*>(object))
        return PlistPtr(plist_new_data(reinterpret_cast<const char*>(data->bytes().data()), data->length()));
    failure = std::string(object->className()) + " cannot be written to a property list";
    return nullptr;
}

} // namespace

StrongId NSPropertyListSerialization::propertyListWithData(const NSData* data, NSPropertyListFormat* format, RefPtr<NSError>* error)
{
    auto fail = [&](const std::string& reason) -> StrongId {
        NSError::report(error, NSCocoaErrorDomain, NSPropertyListReadCorruptError, reason);
        return nullptr;
    };
    if (!data || data->length() == 0)
        return fail("no data");
    if (data->length() > maximumLength)
        return fail("larger than " + std::to_string(maximumLength) + " bytes");
    const uint8_t* bytes = data->bytes().data();
    auto length = static_cast<uint32_t>(data->length());
    bool binary = length >= 8 && std::memcmp(bytes, "bplist", 6) == 0;
    auto failure = binary ? PropertyListChecks::checkBinary(bytes, length, limits) : PropertyListChecks::checkXML(bytes, length, limits);
    if (failure)
        return fail(*failure);

    plist_t root = nullptr;
    if (binary)
        plist_from_bin(reinterpret_cast<const char*>(bytes), length, &root);
    else
        plist_from_xml(reinterpret_cast<const char*>(bytes), length, &root);
    PlistPtr owner(root);
    if (!root)
        return fail("not a property list");
    auto object = objectFromNode(root, 1);
    if (!object)
        return fail("unsupported root object");
    if (format)
        *format = binary ? NSPropertyListBinaryFormat_v1_0 : NSPropertyListXMLFormat_v1_0;
    return object;
}

RefPtr<NSData> NSPropertyListSerialization::dataWithPropertyList(const NSObject* object, NSPropertyListFormat format, RefPtr<NSError>* error)
{
    std::string failure;
    auto root = nodeFromObject(object, 1, failure);
    if (!root) {
        NSError::report(error, NSCocoaErrorDomain, NSPropertyListWriteInvalidError, failure);
        return nullptr;
    }
    char* out = nullptr;
    uint32_t length = 0;
    if (format == NSPropertyListBinaryFormat_v1_0)
        plist_to_bin(root.get(), &out, &length);
    else
        plist_to_xml(root.get(), &out, &length);
    if (!out) {
        NSError::report(error, NSCocoaErrorDomain, NSPropertyListWriteInvalidError, "libplist wrote nothing");
        return nullptr;
    }
    auto data = NSData::dataWithBytes(out, length);
    if (format == NSPropertyListBinaryFormat_v1_0)
        plist_to_bin_free(out);
    else
        plist_to_xml_free(out);
    return data;
}

RefPtr<NSDictionary> NSDictionary::dictionaryWithContentsOfFile(const std::string& path)
{
    auto data = NSFileManager::defaultManager()->contentsAtPath(path, NSPropertyListSerialization::maximumLength, nullptr);
    if (!data)
        return nullptr;
    return objc::castRef<NSDictionary>(NSPropertyListSerialization::propertyListWithData(data.get()));
}
