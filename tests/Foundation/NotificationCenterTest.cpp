#include <Foundation/NSNotificationCenter.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

class Listener final : public NSObject {
    OBJC_CLASS(Listener)
public:
    ~Listener() override { NSNotificationCenter::defaultCenter()->removeObserver(this); }
    void heard(NSNotification* notification)
    {
        heardNames.push_back(notification->name());
        if (whenHeard)
            whenHeard();
    }
    std::vector<std::string> heardNames;
    std::function<void()> whenHeard;
};

} // namespace

OBJC_IMPLEMENT_CLASS(Listener, NSObject)
{
    c.method<&Listener::heard>("heard:");
}

TEST(NSNotificationCenter, DeliversByNameAndPosterToObserversStillRegistered)
{
    auto* center = NSNotificationCenter::defaultCenter();
    auto poster = make<NSObject>();
    auto any = make<Listener>();
    auto fromPoster = make<Listener>();
    auto late = make<Listener>();
    center->addObserver(any.get(), OBJC_SEL("heard:"), "turned");
    center->addObserver(fromPoster.get(), OBJC_SEL("heard:"), "turned", poster.get());

    center->postNotificationName("turned");
    center->postNotificationName("turned", poster.get());
    center->postNotificationName("other", poster.get());
    EXPECT_EQ(any->heardNames, (std::vector<std::string> { "turned", "turned" }));
    EXPECT_EQ(fromPoster->heardNames, (std::vector<std::string> { "turned" }));

    // One told first removes the next and adds another: the removed one is
    // not told, the added one only from the next post on.
    any->whenHeard = [&] {
        center->removeObserver(fromPoster.get());
        center->addObserver(late.get(), OBJC_SEL("heard:"), "turned");
    };
    center->postNotificationName("turned", poster.get());
    EXPECT_EQ(fromPoster->heardNames.size(), 1u);
    EXPECT_TRUE(late->heardNames.empty());
    any->whenHeard = nullptr;
    center->removeObserver(any.get());
    center->postNotificationName("turned");
    EXPECT_EQ(any->heardNames.size(), 3u);
    EXPECT_EQ(late->heardNames.size(), 1u);
}
