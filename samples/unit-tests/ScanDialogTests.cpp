#include "ScanDialog.h"

#include <Lumeq/lumeq_test_gtest.h>

#include <gtest/gtest.h>

using namespace lumeq_test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class ScanDialogTest : public lumeq_test::Test {
protected:
    ScanDialog dialog;
};

TEST_F(ScanDialogTest, RecordsTheButton) {
    dialog.PressScan();
    EXPECT_THAT(Events(),
                Contains(ButtonClicked("Preview", "scan").With("flow", "scan").With("mode", nullptr)));
    EXPECT_THAT(Events(), Not(Contains(ButtonClicked("Preview", "close"))));
    EXPECT_THAT(Refusals(), IsEmpty());
}

TEST_F(ScanDialogTest, RecordsAScanInItsOrder) {
    dialog.Open();
    dialog.PressScan();
    lumeq_test_advance_clock(2500);
    dialog.ScanEnds(true, 3);
    EXPECT_THAT(Events(), ElementsAre(ScreenDisplayed("Preview"), ButtonClicked("Preview", "scan"),
                                      TaskInitiated("ScanAcquire").With("globalContext", "Tarvik 3000"),
                                      TaskCompleted("ScanAcquire", "success")
                                          .With("sourceType", Zuvan::Lumeq::API::Scan::SourceType::flatbed)
                                          .With("resolutionType", "dpi_300")
                                          .With("features.crop", true)
                                          .With("pages", 3)
                                          .With("record.app_event_details.task_duration", "2500")));
}

TEST_F(ScanDialogTest, ThemeThatLumeqRefusesIsNoticed) {
    dialog.ChooseTheme(L"dark__v2");
    dialog.PressScan();
    EXPECT_THAT(Events(), Not(Contains(ButtonClicked("Preview", "scan"))));
    EXPECT_THAT(Refusals(), ElementsAre(Refused("ButtonClicked", "mode").With("refusal.value", L"dark__v2")));
}

TEST_F(ScanDialogTest, SurvivesADeliveryThatFails) {
    lumeq_test_fail_next_delivery();
    dialog.PressClose();
    dialog.PressClose();
    EXPECT_THAT(Events(), ElementsAre(ButtonClicked("Preview", "close")));
}
