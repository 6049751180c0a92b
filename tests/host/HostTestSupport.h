#pragma once

#include <host/SimulatedHost.h>

#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIView.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>

// A host booted at the lock screen on Saturday 21 November 2026, 09:05:00 UTC,
// with the build's artwork.
class HostTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        NSTimeZone::setDefaultTimeZoneName("UTC");
        m_host = std::make_unique<SimulatedHost>();
        m_host->setArtDirectory(KV_HOST_ART_DIR);
        setClock("2026-11-21T09:05:00");
        if (bootsHost())
            m_host->boot();
    }
    void TearDown() override { m_host.reset(); }
    virtual bool bootsHost() const { return true; }

    SimulatedHost& host() { return *m_host; }
    static void setClock(const char* localTime)
    {
        auto date = NSDateFormatter::dateFromLocalISO8601String(localTime);
        ASSERT_TRUE(date);
        VirtualClock::shared().setWallNow(date->timeIntervalSinceReferenceDate());
    }
    static void advance(double seconds)
    {
        NSRunLoop::mainRunLoop()->advance(seconds);
        UIView::layoutPendingViews();
    }
    nlohmann::json dump()
    {
        nlohmann::json host;
        m_host->dumpHost(host);
        return host;
    }

private:
    std::unique_ptr<SimulatedHost> m_host;
};

// A replacement installed once per process that counts its calls while its
// test wants it to and otherwise stays out of the way: hooks cannot be
// removed, so every test leaves them as it found them.
struct HookSwitch {
    bool active { false };
    int calls { 0 };
    void reset()
    {
        active = false;
        calls = 0;
    }
};
