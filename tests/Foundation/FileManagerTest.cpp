#include "DeviceRoot.h"

#include <Foundation/CFLog.h>
#include <Foundation/NSBundle.h>
#include <Foundation/NSProcessInfo.h>
#include <Foundation/VirtualClock.h>

#include <gtest/gtest.h>

#include <fstream>

TEST(NSFileManager, ResolvesDevicePathsInsideTheRoot)
{
    TemporaryDeviceRoot root;
    std::string base = root.folder().string();
    EXPECT_EQ(NSFileManager::hostPath("/private/var/mobile/Library/Preferences/a.plist"), base + "/private/var/mobile/Library/Preferences/a.plist");
    EXPECT_EQ(NSFileManager::hostPath("/var/mobile/x"), base + "/private/var/mobile/x");
    EXPECT_EQ(NSFileManager::hostPath("/../../etc/passwd"), base + "/etc/passwd");
    EXPECT_EQ(NSFileManager::hostPath("/Library//./Application Support/../x"), base + "/Library/x");
    EXPECT_EQ(NSFileManager::hostPath("/"), base);
}

TEST(NSFileManager, CreatesReadsAndRemovesFiles)
{
    TemporaryDeviceRoot root;
    auto* files = NSFileManager::defaultManager();
    const std::string path = "/private/var/mobile/Library/Preferences/list.txt";
    EXPECT_FALSE(files->fileExistsAtPath(path));
    EXPECT_FALSE(files->contentsAtPath(path));
    EXPECT_FALSE(NSString::stringWithContentsOfFile(path));

    auto data = NSData::dataWithBytes("com.apple.mobilecal\ncom.apple.Music", 35);
    ASSERT_TRUE(files->createFileAtPath(path, data.get()));
    bool isDirectory = true;
    EXPECT_TRUE(files->fileExistsAtPath(path, &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_EQ(NSData::dataWithContentsOfFile(path)->bytes(), data->bytes());
    EXPECT_EQ(NSString::stringWithContentsOfFile("/var/mobile/Library/Preferences/list.txt")->componentsSeparatedByString("\n").size(), 2u);

    RefPtr<NSError> error;
    EXPECT_FALSE(files->contentsAtPath(path, 10, &error));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code(), NSFileReadTooLargeError);

    EXPECT_TRUE(files->removeItemAtPath(path));
    EXPECT_FALSE(files->fileExistsAtPath(path));
    EXPECT_FALSE(files->removeItemAtPath(path, &error));
    EXPECT_EQ(error->code(), NSFileNoSuchFileError);

    EXPECT_FALSE(files->createDirectoryAtPath("/a/b/c", false));
    EXPECT_TRUE(files->createDirectoryAtPath("/a/b/c", true));
    EXPECT_TRUE(files->fileExistsAtPath("/a/b/c", &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(files->contentsAtPath("/a/b/c"));
    EXPECT_EQ(files->contentsOfDirectoryAtPath("/a"), std::vector<std::string> { "b" });
}

TEST(NSBundle, FindsResourcesByNameAndType)
{
    TemporaryDeviceRoot root;
    const std::string bundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";
    EXPECT_FALSE(NSBundle::bundleWithPath(bundlePath));
    root.write(bundlePath + "/Battery/Battery60.png", "png");
    root.write(bundlePath + "/Weather.png", "png");
    auto bundle = NSBundle::bundleWithPath(bundlePath);
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundlePath(), bundlePath);
    EXPECT_EQ(bundle->pathForResource("Battery/Battery60", "png"), bundlePath + "/Battery/Battery60.png");
    EXPECT_EQ(bundle->pathForResource("Weather.png", ""), bundlePath + "/Weather.png");
    EXPECT_EQ(bundle->pathForResource("Battery/Battery70", "png"), "");
    EXPECT_EQ(bundle->pathForResource("Battery", ""), "") << "a folder is not a resource";
    EXPECT_EQ(objc::send<std::string>(bundle, "pathForResource:ofType:", "Weather", "png"), bundlePath + "/Weather.png");
}

TEST(NSProcessInfo, AnswersWhatTheHostSets)
{
    auto* info = NSProcessInfo::processInfo();
    EXPECT_DOUBLE_EQ(info->systemUptime(), VirtualClock::shared().monotonic());
    info->setLowPowerModeEnabled(true);
    EXPECT_TRUE(objc::send<bool>(info, "isLowPowerModeEnabled"));
    info->setLowPowerModeEnabled(false);
    EXPECT_FALSE(info->isLowPowerModeEnabled());
}

TEST(CFLog, WritesFormattedLinesToTheHostLog)
{
    std::vector<std::string> lines;
    objc::Runtime::shared().setLogSink([&](const std::string& line) { lines.push_back(line); });
    auto message = NSString::stringWithFormat("logos: nil class %s", "SBLockScreenView");
    CFLog(kCFLogLevelError, "[%s: %s:%d] %s: %@", "Kavelin", "host/Hooks.cpp", 42, "ERROR", message.get());
    objc::Runtime::shared().setLogSink(nullptr);
    EXPECT_EQ(lines, std::vector<std::string> { "[Kavelin: host/Hooks.cpp:42] ERROR: logos: nil class SBLockScreenView" });
}
