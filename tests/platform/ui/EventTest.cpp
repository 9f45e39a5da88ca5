// SPDX-License-Identifier: MIT
#include "platform/ui/Event.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

TEST(Event, DoesNothingWithoutAHandler)
{
    const Event<int> event;
    EXPECT_NO_THROW(event.Raise(1));
}

TEST(Event, TellsItsHandlerEveryTime)
{
    Event<int, std::string> event;
    std::vector<std::string> heard;
    event.Connect(
        [&heard](int number, const std::string& text) { heard.push_back(text + std::to_string(number)); });
    event.Raise(1, "a");
    event.Raise(2, "b");
    EXPECT_EQ(heard, (std::vector<std::string>{"a1", "b2"}));
}

TEST(Event, HasOneHandlerAtMost)
{
    Event<> event;
    int first = 0;
    int second = 0;
    event.Connect([&first] { ++first; });
    event.Connect([&second] { ++second; });
    event.Raise();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(Event, FallsSilentWhenNothingIsConnected)
{
    Event<> event;
    int calls = 0;
    event.Connect([&calls] { ++calls; });
    event.Connect(nullptr);
    event.Raise();
    EXPECT_EQ(calls, 0);
}

TEST(Event, LetsItsHandlerChangeAReferencedArgument)
{
    Event<int&> event;
    event.Connect([](int& key) { key = 0; });
    int key = 65;
    event.Raise(key);
    EXPECT_EQ(key, 0);
}

TEST(Event, DropsEveryKindOfException)
{
    Event<> event;
    int calls = 0;
    event.Connect([&calls] {
        ++calls;
        throw std::runtime_error("from a handler");
    });
    EXPECT_NO_THROW(event.Raise());
    event.Connect([&calls] {
        ++calls;
        throw 5;
    });
    EXPECT_NO_THROW(event.Raise());
    EXPECT_EQ(calls, 2);
}

TEST(Event, StillTellsAHandlerThatFailedBefore)
{
    Event<> event;
    int calls = 0;
    event.Connect([&calls] {
        ++calls;
        throw std::runtime_error("from a handler");
    });
    event.Raise();
    event.Raise();
    EXPECT_EQ(calls, 2);
}

TEST(Event, LetsAHandlerConnectItsSuccessor)
{
    Event<> event;
    std::string heard;
    event.Connect([&, mark = std::string("first ")] {
        event.Connect([&heard] { heard += "second "; });
        // Its own captures are still there.
        heard += mark;
    });
    event.Raise();
    event.Raise();
    EXPECT_EQ(heard, "first second ");
}

TEST(Event, LetsAHandlerEndTheControlThatRaisesIt)
{
    auto event = std::make_unique<Event<>>();
    std::string heard;
    event->Connect([&, mark = std::string("still here")] {
        event.reset();
        heard = mark;
    });
    event->Raise();
    EXPECT_EQ(heard, "still here");
    EXPECT_EQ(event, nullptr);
}

TEST(Event, RaisesAgainWithinItsOwnHandler)
{
    Event<int> event;
    std::vector<int> heard;
    event.Connect([&](int depth) {
        heard.push_back(depth);
        if (depth < 3)
            event.Raise(depth + 1);
    });
    event.Raise(1);
    EXPECT_EQ(heard, (std::vector<int>{1, 2, 3}));
}

} // namespace
} // namespace KestrinProductEditor
