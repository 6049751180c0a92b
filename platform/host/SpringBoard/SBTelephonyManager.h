#pragma once

#include <objc/objc.h>

// Phone calls: one in progress, or one ringing.
class SBTelephonyManager final : public NSObject {
    OBJC_CLASS(SBTelephonyManager)
public:
    static RefPtr<SBTelephonyManager> sharedTelephonyManager();

    bool inCall() const { return m_inCall; }
    bool incomingCallExists() const { return m_incomingCall; }
    void setInCall(bool inCall) { m_inCall = inCall; }
    void setIncomingCallExists(bool exists) { m_incomingCall = exists; }

private:
    bool m_inCall { false };
    bool m_incomingCall { false };
};
