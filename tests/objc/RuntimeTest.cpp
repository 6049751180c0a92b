#include <objc/objc.h>

#include <gtest/gtest.h>

namespace {

class Animal : public NSObject {
    OBJC_CLASS(Animal)
public:
    virtual std::string speak() { return "..."; }
    int legs() const { return m_legs; }
    void setLegs(int legs) { m_legs = legs; }
    double scaled(double factor, int offset) { return m_legs * factor + offset; }
    RefPtr<Animal> friendAnimal() const { return m_friend; }
    static RefPtr<Animal> sharedInstance()
    {
        static RefPtr<Animal> shared = make<Animal>();
        return shared;
    }
    RefPtr<Animal> m_friend;

private:
    int m_legs { 4 };
};

class Dog : public Animal {
    OBJC_CLASS(Dog)
public:
    std::string speak() override { return "woof"; }
    std::string greet(const std::string& name) { return "hello " + name; }
};

} // namespace

OBJC_IMPLEMENT_CLASS(Animal, NSObject)
{
    c.method<&Animal::speak>("speak");
    c.method<&Animal::legs>("legs");
    c.method<&Animal::setLegs>("setLegs:");
    c.method<&Animal::scaled>("scaled:offset:");
    c.method<&Animal::friendAnimal>("friend");
    c.classMethod<&Animal::sharedInstance>("sharedInstance");
    c.ivar<&Animal::m_friend>("_friend");
    c.allocatable();
}

OBJC_IMPLEMENT_CLASS(Dog, Animal)
{
    c.method<&Dog::greet>("greet:");
    c.allocatable();
}

using namespace objc;

namespace {

IMP originalSpeak;
std::string loudSpeak(NSObject* self, SEL cmd) { return callOriginal<std::string>(originalSpeak, self, cmd) + "!"; }
IMP originalSpeakAgain;
std::string louderSpeak(NSObject* self, SEL cmd) { return callOriginal<std::string>(originalSpeakAgain, self, cmd) + "?"; }

} // namespace

TEST(Runtime, ClassesAreFoundByNameWithTheirHierarchy)
{
    Class* dog = objc_getClass("Dog");
    ASSERT_TRUE(dog);
    EXPECT_EQ(dog->superclass(), objc_getClass("Animal"));
    EXPECT_EQ(objc_getClass("Animal")->superclass(), objc_getClass("NSObject"));
    EXPECT_EQ(objc_getClass("NoSuchClass"), nullptr);

    auto rex = make<Dog>();
    EXPECT_STREQ(rex->className(), "Dog");
    EXPECT_TRUE(rex->isKindOfClass(objc_getClass("Animal")));
    EXPECT_FALSE(make<Animal>()->isKindOfClass(dog));
}

TEST(Runtime, MessagesDispatchWithRealSignaturesAndInheritance)
{
    auto rex = make<Dog>();
    EXPECT_EQ(send<std::string>(rex, "speak"), "woof");
    send(rex, "setLegs:", 3);
    EXPECT_EQ(send<int>(rex, "legs"), 3);
    EXPECT_DOUBLE_EQ(send<double>(rex, "scaled:offset:", 2.0, 1), 7.0);
    EXPECT_EQ(send<std::string>(rex, "greet:", "Ann"), "hello Ann");

    auto shared = send<RefPtr<Animal>>(objc_getClass("Animal"), "sharedInstance");
    EXPECT_EQ(shared, Animal::sharedInstance());
    auto allocated = send<StrongId>(objc_getClass("Dog"), "alloc");
    EXPECT_STREQ(allocated->className(), "Dog");
}

TEST(Runtime, MessagesToNullDoNothingAndAnswerZero)
{
    NSObject* nothing = nullptr;
    EXPECT_EQ(send<int>(nothing, "legs"), 0);
    EXPECT_EQ(send<std::string>(nothing, "speak"), "");
    EXPECT_EQ(send<StrongId>(nothing, "friend"), nullptr);
    send(nothing, "setLegs:", 2);
}

TEST(Runtime, UnrecognisedSelectorsAreLoggedOutsideAttemptAndRaisedInside)
{
    std::vector<std::string> log;
    Runtime::shared().setLogSink([&](const std::string& line) { log.push_back(line); });
    auto rex = make<Dog>();
    EXPECT_EQ(send<int>(rex, "fly"), 0);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_NE(log[0].find("-[Dog fly]: unrecognized selector"), std::string::npos);

    int value = attempt<int>([&] { return send<int>(rex, "fly"); }, [](const Exception&) { return 99; });
    EXPECT_EQ(value, 99);
    EXPECT_EQ(log.size(), 1u);
    Runtime::shared().setLogSink(nullptr);
}

TEST(Runtime, HooksKeepTheOriginalAndChain)
{
    Class* dog = objc_getClass("Dog");
    MSHookMessageEx(dog, sel_registerName("speak"), &loudSpeak, &originalSpeak);
    EXPECT_EQ(send<std::string>(make<Dog>(), "speak"), "woof!");
    MSHookMessageEx(dog, sel_registerName("speak"), &louderSpeak, &originalSpeakAgain);
    EXPECT_EQ(send<std::string>(make<Dog>(), "speak"), "woof!?");
    // The superclass is untouched.
    EXPECT_EQ(send<std::string>(make<Animal>(), "speak"), "...");
}

TEST(Runtime, InstanceVariablesAreFoundByNameAndMayBeMissing)
{
    auto a = make<Animal>();
    auto b = make<Dog>();
    a->m_friend = b;
    EXPECT_EQ(object_getIvar(a.get(), "_friend"), b);
    EXPECT_EQ(object_getIvar(b.get(), "_friend"), nullptr);
    EXPECT_EQ(object_getIvar(a.get(), "_enemy"), nullptr);
    EXPECT_EQ(object_getIvar(nullptr, "_friend"), nullptr);
    EXPECT_TRUE(object_setIvar(b.get(), "_friend", a));
    EXPECT_EQ(b->m_friend, a);
    b->m_friend = nullptr;
}

TEST(Runtime, HiddenClassesAreAbsentOnlyForLookupsByName)
{
    Runtime::shared().hideClass("Animal");
    EXPECT_EQ(objc_getClass("Animal"), nullptr);
    EXPECT_EQ(send<std::string>(make<Dog>(), "speak"), "woof!?");
}

TEST(Runtime, WeakReferencesReadNullOnceTheObjectIsGone)
{
    auto dog = make<Dog>();
    WeakPtr<Animal> weak(dog.get());
    WeakPtr<Animal> other(dog.get());
    WeakPtr<Animal> none;
    EXPECT_EQ(weak.get(), dog.get());
    EXPECT_EQ(dog->retainCount(), 1);
    EXPECT_FALSE(none);

    dog = nullptr;
    EXPECT_FALSE(weak);
    EXPECT_EQ(other.get(), nullptr);
}
