#pragma once

// A device root of the harness's own in the temporary folder, removed when
// the process ends, so that harnesses running side by side never share files.
#include <Foundation/NSFileManager.h>
#include <objc/Runtime.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

inline std::string prepareFuzzDeviceRoot(const std::string& harness)
{
    std::string root = (std::filesystem::temp_directory_path() / ("kv-fuzz-" + harness + "-" + std::to_string(getpid()))).string();
    std::filesystem::create_directories(root);
    NSFileManager::setDeviceRoot(root);
    // Unanswered messages are expected here; keep them out of the fuzzer's output.
    objc::Runtime::shared().setLogSink([](const std::string&) { });
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(NSFileManager::deviceRoot(), ignored);
    });
    return root;
}
