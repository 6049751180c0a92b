#pragma once

#include <Foundation/NSRunLoop.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIGestureRecognizer.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIWindow.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Receives actions through the runtime and writes down what arrived: the
// action's name and, for recognisers, the state they were sent in.
class ActionLog : public NSObject {
    OBJC_CLASS(ActionLog)
public:
    void single(NSObject* sender) { note("single", sender); }
    void twice(NSObject* sender) { note("double", sender); }
    void press(NSObject* sender) { note("press", sender); }
    void swipe(NSObject* sender) { note("swipe", sender); }
    void button(NSObject* sender) { note("button", sender); }
    void changed(NSObject* sender) { note("changed", sender); }
    void bare() { note("bare", nullptr); }

    std::vector<std::string> entries;
    std::vector<NSObject*> senders;

private:
    void note(const std::string& name, NSObject* sender);
};

// A visible, key, screen-sized window on a portrait screen, and a clean
// gesture state after each test.
class EventsTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A view added to `parent` (the window when null).
    template<typename T = UIView>
    RefPtr<T> addView(CGRect frame, UIView* parent = nullptr)
    {
        auto view = make<T>(frame);
        (parent ? parent : window.get())->addSubview(view.get());
        return view;
    }
    static CGPoint centre(UIView*);
    static UIApplication& app() { return *UIApplication::sharedApplication(); }
    static void advance(double seconds) { NSRunLoop::mainRunLoop()->advance(seconds); }

    RefPtr<UIWindow> window;
    RefPtr<ActionLog> log { make<ActionLog>() };
};
