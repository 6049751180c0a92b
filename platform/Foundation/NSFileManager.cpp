#include "NSFileManager.h"

#include "NSBundle.h"
#include "NSString.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>

namespace fs = std::filesystem;

OBJC_IMPLEMENT_CLASS(NSFileManager, NSObject)
{
    c.classMethod<&NSFileManager::defaultManager>("defaultManager");
    c.method<static_cast<bool (NSFileManager::*)(const std::string&) const>(&NSFileManager::fileExistsAtPath)>("fileExistsAtPath:");
    c.method<static_cast<RefPtr<NSData> (NSFileManager::*)(const std::string&) const>(&NSFileManager::contentsAtPath)>("contentsAtPath:");
}

OBJC_IMPLEMENT_CLASS(NSBundle, NSObject)
{
    c.classMethod<&NSBundle::bundleWithPath>("bundleWithPath:");
    c.method<&NSBundle::bundlePath>("bundlePath");
    c.method<&NSBundle::pathForResource>("pathForResource:ofType:");
}

static std::string& rootFolder()
{
    static auto* root = new std::string();
    return *root;
}

NSFileManager* NSFileManager::defaultManager()
{
    static auto* manager = new NSFileManager();
    return manager;
}

void NSFileManager::setDeviceRoot(const std::string& hostFolder) { rootFolder() = hostFolder; }

const std::string& NSFileManager::deviceRoot() { return rootFolder(); }

std::string NSFileManager::hostPath(const std::string& devicePath)
{
    const std::string& root = rootFolder();
    if (root.empty())
        return devicePath;
    // Resolve the path lexically inside the root, so that no device path can
    // name a file outside it.
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= devicePath.size()) {
        size_t end = devicePath.find('/', start);
        if (end == std::string::npos)
            end = devicePath.size();
        std::string part = devicePath.substr(start, end - start);
        if (part == "..") {
            if (!parts.empty())
                parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(std::move(part));
        }
        start = end + 1;
    }
    if (!parts.empty() && parts.front() == "var")
        parts.insert(parts.begin(), "private");
    std::string result = root;
    for (auto& part : parts)
        result += "/" + part;
    return result;
}

bool NSFileManager::fileExistsAtPath(const std::string& path) const { return fileExistsAtPath(path, nullptr); }

bool NSFileManager::fileExistsAtPath(const std::string& path, bool* isDirectory) const
{
    std::error_code error;
    auto status = fs::status(hostPath(path), error);
    if (error || !fs::exists(status))
        return false;
    if (isDirectory)
        *isDirectory = fs::is_directory(status);
    return true;
}

RefPtr<NSData> NSFileManager::contentsAtPath(const std::string& path) const
{
    return contentsAtPath(path, std::numeric_limits<size_t>::max(), nullptr);
}

RefPtr<NSData> NSFileManager::contentsAtPath(const std::string& path, size_t maximumLength, RefPtr<NSError>* error) const
{
    std::string file = hostPath(path);
    std::error_code status;
    if (!fs::is_regular_file(file, status)) {
        NSError::report(error, NSCocoaErrorDomain, NSFileNoSuchFileError, "no file at " + path);
        return nullptr;
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        NSError::report(error, NSCocoaErrorDomain, NSFileReadUnknownError, "cannot open " + path);
        return nullptr;
    }
    // Read in pieces rather than trusting the size the file system reports,
    // and stop as soon as the limit is passed.
    std::vector<uint8_t> bytes;
    char buffer[16384];
    while (stream) {
        stream.read(buffer, sizeof buffer);
        size_t got = static_cast<size_t>(stream.gcount());
        if (bytes.size() + got > maximumLength) {
            NSError::report(error, NSCocoaErrorDomain, NSFileReadTooLargeError, path + " is larger than " + std::to_string(maximumLength) + " bytes");
            return nullptr;
        }
        bytes.insert(bytes.end(), buffer, buffer + got);
    }
    if (stream.bad()) {
        NSError::report(error, NSCocoaErrorDomain, NSFileReadUnknownError, "cannot read " + path);
        return nullptr;
    }
    return make<NSData>(std::move(bytes));
}

bool NSFileManager::createFileAtPath(const std::string& path, const NSData* contents) const
{
    fs::path file = hostPath(path);
    std::error_code error;
    if (file.has_parent_path())
        fs::create_directories(file.parent_path(), error);
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!stream)
        return false;
    if (contents && contents->length())
        stream.write(reinterpret_cast<const char*>(contents->bytes().data()), static_cast<std::streamsize>(contents->length()));
    stream.close();
    return !stream.fail();
}

bool NSFileManager::createDirectoryAtPath(const std::string& path, bool withIntermediateDirectories, RefPtr<NSError>* error) const
{
    fs::path folder = hostPath(path);
    std::error_code status;
    if (withIntermediateDirectories)
        fs::create_directories(folder, status);
    else
        fs::create_directory(folder, status);
    if (status || !fs::is_directory(folder, status)) {
        NSError::report(error, NSCocoaErrorDomain, NSFileWriteUnknownError, "cannot create folder " + path);
        return false;
    }
    return true;
}

bool NSFileManager::removeItemAtPath(const std::string& path, RefPtr<NSError>* error) const
{
    std::error_code status;
    auto removed = fs::remove_all(hostPath(path), status);
    if (status || removed == 0) {
        NSError::report(error, NSCocoaErrorDomain, NSFileNoSuchFileError, "cannot remove " + path);
        return false;
    }
    return true;
}

std::vector<std::string> NSFileManager::contentsOfDirectoryAtPath(const std::string& path) const
{
    std::vector<std::string> names;
    std::error_code status;
    for (fs::directory_iterator it(hostPath(path), status), end; !status && it != end; it.increment(status))
        names.push_back(it->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

RefPtr<NSData> NSData::dataWithContentsOfFile(const std::string& path) { return NSFileManager::defaultManager()->contentsAtPath(path); }

RefPtr<NSString> NSString::stringWithContentsOfFile(const std::string& path)
{
    auto data = NSData::dataWithContentsOfFile(path);
    if (!data)
        return nullptr;
    return NSString::create(std::string(data->bytes().begin(), data->bytes().end()));
}

RefPtr<NSBundle> NSBundle::bundleWithPath(const std::string& devicePath)
{
    bool isDirectory = false;
    if (!NSFileManager::defaultManager()->fileExistsAtPath(devicePath, &isDirectory) || !isDirectory)
        return nullptr;
    return make<NSBundle>(devicePath);
}

std::string NSBundle::pathForResource(const std::string& name, const std::string& type) const
{
    if (name.empty())
        return {};
    std::string file = type.empty() ? name : name + "." + type;
    std::string path = m_path + "/" + file;
    bool isDirectory = false;
    if (!NSFileManager::defaultManager()->fileExistsAtPath(path, &isDirectory) || isDirectory)
        return {};
    return path;
}
