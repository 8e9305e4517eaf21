#include "compare/document/document_observer.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

namespace zorvane::document_observer_test {
namespace {

struct Named : DocumentObserver {
    Named(std::string own_name, std::string& heard) : name(std::move(own_name)), heard_(heard) {}
    void Replaced(CharPos, std::int32_t, std::int32_t) override {}
    void Reformatted(CharPos, std::int32_t) override {}
    void Reset() override {
        heard_ += name;
        if (then)
            then();
    }

    std::string name;
    std::function<void()> then;

  private:
    std::string& heard_;
};

TEST(ObserverList, TakesChangesInsideANotice) {
    std::string heard;
    Named a("a", heard);
    Named b("b", heard);
    Named c("c", heard);
    Named late("d", heard);
    ObserverList list;
    const auto notify = [&] {
        heard.clear();
        list.Notify([](DocumentObserver& observer) { observer.Reset(); });
        return heard;
    };
    list.Add(a);
    list.Add(b);
    list.Add(c);
    EXPECT_EQ(notify(), "abc");
    a.then = [&] {
        list.Remove(a);
        list.Remove(b);
        for (int more = 0; more < 20; ++more)
            list.Add(late);
    };
    EXPECT_EQ(notify(), "ac") << "who is removed hears nothing, who is added not yet";
    EXPECT_EQ(notify(), "c" + std::string(20, 'd'));
    list.Remove(late);
    c.then = [&] { list.Remove(c); };
    EXPECT_EQ(notify(), "c");
    EXPECT_EQ(notify(), "");
}

}  // namespace
}  // namespace zorvane::document_observer_test
