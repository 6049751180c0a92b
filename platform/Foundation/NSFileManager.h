#pragma once

#include "NSData.h"
#include "NSError.h"

#include <objc/objc.h>

#include <string>
#include <vector>

// The device's file system. Every path the code asks about is a device path
// ("/private/var/mobile/Library/...", "/Library/Application Support/...")
// and lives under the device root, a folder of the machine running the
// simulation that the host sets once; with no root set, device paths are
// the machine's own. ".." never climbs above the root, and "/var" is the
// link to "/private/var" that it is on the phone.
class NSFileManager final : public NSObject {
    OBJC_CLASS(NSFileManager)
public:
    static NSFileManager* defaultManager();

    static void setDeviceRoot(const std::string& hostFolder);
    static const std::string& deviceRoot();
    // The machine's path for a device path.
    static std::string hostPath(const std::string& devicePath);

    bool fileExistsAtPath(const std::string& path) const;
    bool fileExistsAtPath(const std::string& path, bool* isDirectory) const;
    // Null for a missing or unreadable file, or a folder.
    RefPtr<NSData> contentsAtPath(const std::string& path) const;
    // The same, failing with NSFileReadTooLargeError past maximumLength bytes.
    RefPtr<NSData> contentsAtPath(const std::string& path, size_t maximumLength, RefPtr<NSError>* error) const;
    // Writes the file whole (replacing it), creating missing parent folders.
    bool createFileAtPath(const std::string& path, const NSData* contents) const;
    bool createDirectoryAtPath(const std::string& path, bool withIntermediateDirectories, RefPtr<NSError>* error = nullptr) const;
    // Removes a file, or a folder with everything in it.
    bool removeItemAtPath(const std::string& path, RefPtr<NSError>* error = nullptr) const;
    // Names of the entries of a folder, sorted; empty for a missing folder.
    std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const;
};
