#pragma once

#include <objc/objc.h>

#include <string>

// A folder of resources, found by device path.
class NSBundle final : public NSObject {
    OBJC_CLASS(NSBundle)
public:
    NSBundle() = default;
    explicit NSBundle(std::string path)
        : m_path(std::move(path))
    {
    }
    // Null when the folder does not exist.
    static RefPtr<NSBundle> bundleWithPath(const std::string& devicePath);

    const std::string& bundlePath() const { return m_path; }
    // The device path of "name.type" in the bundle ("Battery/Battery60" with
    // "png" finds Battery/Battery60.png), or "" when there is no such file.
    // An empty type takes the name as the whole file name.
    std::string pathForResource(const std::string& name, const std::string& type) const;

private:
    std::string m_path;
};
