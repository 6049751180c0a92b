#pragma once

#include <objc/objc.h>

// FaceTime calls: one in progress, or an invitation waiting.
class SBConferenceManager final : public NSObject {
    OBJC_CLASS(SBConferenceManager)
public:
    static RefPtr<SBConferenceManager> sharedInstance();

    bool activeFaceTimeCallExists() const { return m_activeCall; }
    bool faceTimeInvitationExists() const { return m_invitation; }
    void setActiveFaceTimeCallExists(bool exists) { m_activeCall = exists; }
    void setFaceTimeInvitationExists(bool exists) { m_invitation = exists; }

private:
    bool m_activeCall { false };
    bool m_invitation { false };
};
