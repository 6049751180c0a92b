#pragma once

#include "../Foundation/DeviceRoot.h"

#include <Foundation/NSDictionary.h>
#include <Foundation/NSPropertyListSerialization.h>
#include <settings/KVSettings.h>

#include <gtest/gtest.h>

// A device root of its own for each test, with helpers that write the
// preferences file as the settings pane would.
class PreferencesTest : public ::testing::Test {
protected:
    void writeRaw(const std::string& bytes) const { m_root.write(KVSettings::preferencesPath, bytes); }

    void writeXML(const std::string& body) const
    {
        writeRaw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n");
    }

    void writePreferences(const NSDictionary* preferences, NSPropertyListFormat format = NSPropertyListBinaryFormat_v1_0) const
    {
        auto data = NSPropertyListSerialization::dataWithPropertyList(preferences, format);
        ASSERT_TRUE(data);
        writeRaw(std::string(data->bytes().begin(), data->bytes().end()));
    }

    // Writes a dictionary of one key.
    void writeValue(const std::string& key, StrongId value) const
    {
        auto preferences = NSDictionary::create();
        preferences->setObject(std::move(value), key);
        writePreferences(preferences.get());
    }

    static RefPtr<KVSettings> freshSettings() { return objc::castRef<KVSettings>(make<KVSettings>()->init()); }

    TemporaryDeviceRoot m_root;
};
