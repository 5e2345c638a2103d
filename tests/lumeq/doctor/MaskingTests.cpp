#include "lumeq/doctor/Masking.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

std::string MaskedText(const std::string& text, std::vector<std::string> secrets = {},
                       std::vector<std::string> names = {}) {
    return TextMasking(std::move(secrets), std::move(names)).Masked(text);
}

} // namespace

TEST(TextMasking, LeavesOrdinaryTextsAlone) {
    const std::string text =
        "Lumeq.Log.txt, project 0123456789ABCDEF01234567, 127.0.0.1\r\nC:\\Host\\scan.exe @ 10:00";
    EXPECT_EQ(MaskedText(text), text);
    EXPECT_EQ(MaskedText(""), "");
}

TEST(TextMasking, MasksTheSecretsInAnyLetterCase) {
    EXPECT_EQ(MaskedText("a gbxra9 B GBXRA9, C:\\anna\\x", {"gbxra9", "Anna"}), "a *** B ***, C:\\***\\x");
    EXPECT_EQ(MaskedText("a b", {"", "b"}), "a b") << "short ones occur everywhere";
    EXPECT_EQ(MaskedText(R"({"detail":"a\tgbxra9","url":"x%20gbxra9y"})", {"gbxra9"}),
              R"({"detail":"a\t***","url":"x%20***y"})");
}

TEST(TextMasking, MasksTheNamesAsWholeWords) {
    EXPECT_EQ(MaskedText("Log, LogLevel, Lumeq.Log.txt", {}, {"log"}), "***, LogLevel, Lumeq.***.txt");
    EXPECT_EQ(MaskedText("C:\\anna\\x, ANNA", {}, {"Anna", "x"}), "C:\\***\\x, ***");
}

TEST(TextMasking, MasksTokensThatItDoesNotKnow) {
    EXPECT_EQ(MaskedText("Authorization: Bearer to.ken-9  User-Agent:x"),
              "Authorization: Bearer ***  User-Agent:x");
    EXPECT_EQ(MaskedText("projectId=P, authToken=gbx ra9\r\nnext"), "projectId=P, authToken=***\r\nnext");
    EXPECT_EQ(MaskedText("x | PostMessageAndForget(a, b/1, c, sys_info_base, token9)\nnext"),
              "x | PostMessageAndForget(a, b/1, c, sys_info_base, ***\nnext");
    EXPECT_EQ(MaskedText("PostMessageAndForget about to post, in time\nx"),
              "PostMessageAndForget about to post, in time\nx");
    EXPECT_EQ(MaskedText("<AuthenticationToken xml:space='preserve'>gbx</AuthenticationToken>"),
              "<AuthenticationToken xml:space='preserve'>***</AuthenticationToken>");
    EXPECT_EQ(MaskedText("<AuthenticationToken>cut"), "<AuthenticationToken>***");
    EXPECT_EQ(MaskedText("<AuthenticationToken"), "<AuthenticationToken");
}

TEST(TextMasking, MasksIdentifiersOfDevices) {
    EXPECT_EQ(MaskedText("t 12345678-9ABC-4def-8123-456789abcdef."), "t ***.");
    EXPECT_EQ(MaskedText("biid: \"x\" b"), "biid: \"***\" b");
    EXPECT_EQ(MaskedText("{" + std::string(31, '0') + "a}, " + std::string(30, '0') + "a"),
              "{***}, " + std::string(30, '0') + "a");
    EXPECT_EQ(MaskedText("01:23:45:67:89:ab"), "***");
    // Values that are no GUIDs, because somebody wrote them.
    EXPECT_EQ(MaskedText("<AppDeployedUuid>one</AppDeployedUuid>"), "<AppDeployedUuid>***</AppDeployedUuid>");
    EXPECT_EQ(MaskedText("GetConfigFileData: appDeployedUuid=one, serverUrl=s"),
              "GetConfigFileData: appDeployedUuid=***, serverUrl=s");
    EXPECT_EQ(MaskedText(R"({"app_deployed_uuid":"one","a":"{\"sys_uuid\":\"two\"}"})"),
              R"({"app_deployed_uuid":"***","a":"{\"sys_uuid\":\"***\"}"})");
    EXPECT_EQ(MaskedText("deviceUuid: \"serial-7\", x"), "deviceUuid: \"***\", x");
    EXPECT_EQ(MaskedText(R"({"pc_sku":"ABC7","sys_uuid":"X","pc_category":"Computer"})"),
              R"({"pc_sku":"***","sys_uuid":"***","pc_category":"Computer"})");
    EXPECT_EQ(MaskedText(R"("text": "{\"pc_sku\":\"ABC7\",\"a\":\"b\"}")"),
              R"("text": "{\"pc_sku\":\"***\",\"a\":\"b\"}")");
}

TEST(TextMasking, MasksEncodedMessages) {
    EXPECT_EQ(MaskedText("Encoded Message==?media_type:application/json.b64?=eyJhIjoi/+==\r\nnext"),
              "Encoded Message==?media_type:application/json.b64?=***\r\nnext");
    EXPECT_EQ(MaskedText(R"([{"body":"=?media_type:application/json.b64?=eyJh"}])"),
              R"([{"body":"=?media_type:application/json.b64?=***"}])");
}

TEST(TextMasking, MasksNamesOfUsersInPaths) {
    EXPECT_EQ(MaskedText("in C:\\Users\\Anna M\\AppData\\x.txt"), "in C:\\Users\\***\\AppData\\x.txt");
    EXPECT_EQ(MaskedText(R"("c:\\users\\anna\\x")"), R"("c:\\users\\***\\x")");
    EXPECT_EQ(MaskedText("Z:/home/anna/x /users/b"), "Z:/home/***/x /users/b");
}

TEST(TextMasking, MasksAddresses) { EXPECT_EQ(MaskedText("to anna.m@example.org, @x a@"), "to ***, @x a@"); }

} // namespace Zuvan::Lumeq::Tool::Doctor
