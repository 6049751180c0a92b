#pragma once

#include <objc/objc.h>

#include <string>

enum UIUserInterfaceIdiom : int {
    UIUserInterfaceIdiomPhone = 0,
    UIUserInterfaceIdiomPad = 1,
};

// The device as UIKit describes it. Whoever plays the device sets the
// system version and model (an iPhone on iOS 9.3.3 until then).
class UIDevice final : public NSObject {
    OBJC_CLASS(UIDevice)
public:
    static UIDevice* currentDevice();

    const std::string& systemVersion() const { return m_systemVersion; }
    void setSystemVersion(std::string version) { m_systemVersion = std::move(version); }
    // "iPhone", "iPad" or "iPod touch".
    const std::string& model() const { return m_model; }
    void setModel(std::string model) { m_model = std::move(model); }
    UIUserInterfaceIdiom userInterfaceIdiom() const { return m_model.starts_with("iPad") ? UIUserInterfaceIdiomPad : UIUserInterfaceIdiomPhone; }

private:
    std::string m_systemVersion { "9.3.3" };
    std::string m_model { "iPhone" };
};
