#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Eventing {

TEST(Vocabulary, HasTheActors) {
    EXPECT_EQ(Actor::User, L"user");
    EXPECT_EQ(Actor::App, L"app");
    EXPECT_EQ(Actor::Self, L"self");
}

TEST(Vocabulary, HasTheActions) {
    EXPECT_EQ(Action::Checked, L"checked");
    EXPECT_EQ(Action::Unchecked, L"unchecked");
    EXPECT_EQ(Action::Clicked, L"clicked");
    EXPECT_EQ(Action::Closed, L"closed");
    EXPECT_EQ(Action::Submitted, L"submitted");
    EXPECT_EQ(Action::Displayed, L"displayed");
    EXPECT_EQ(Action::Generated, L"generated");
    EXPECT_EQ(Action::Launched, L"launched");
    EXPECT_EQ(Action::Initiated, L"initiated");
    EXPECT_EQ(Action::Completed, L"completed");
}

TEST(Vocabulary, HasTheObjects) {
    EXPECT_EQ(Object::Ad, L"ad");
    EXPECT_EQ(Object::Button, L"button");
    EXPECT_EQ(Object::Checkbox, L"checkbox");
    EXPECT_EQ(Object::Hyperlink, L"hyperlink");
    EXPECT_EQ(Object::Screen, L"screen");
    EXPECT_EQ(Object::Tile, L"tile");
    EXPECT_EQ(Object::Url, L"url");
    EXPECT_EQ(Object::Form, L"form");
    EXPECT_EQ(Object::Report, L"report");
    EXPECT_EQ(Object::Task, L"task");
}

TEST(Vocabulary, HasTheWordsOfSessionsThoughNoRecordCarriesThem) {
    EXPECT_EQ(Object::Session, L"session");
    EXPECT_EQ(Key::SessionTime, L"app_event_session_time");
    EXPECT_EQ(Key::SubsessionLabel, L"app_event_subsession_label");
    EXPECT_EQ(Key::SubsessionSequenceNumber, L"app_event_subsession_seqnum");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
