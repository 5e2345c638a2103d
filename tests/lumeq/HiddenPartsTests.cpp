#include "lumeq/view/HiddenParts.h"

#include <gmock/gmock.h>

#include <string>

namespace Zuvan::Lumeq::Tool {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> HiddenTexts(std::string_view text) {
    std::vector<std::string> texts;
    for (const HiddenPart& part : PartsToHide(text))
        texts.emplace_back(text.substr(part.begin, part.size));
    return texts;
}

const std::string Uuid = "1c852a4d-B800-1f08-abcd-3c52821f9ab0";
const std::string Hash = "facfc3f2d1bebd6546317e8cab1959ca";

} // namespace

TEST(HiddenParts, Identifiers) {
    EXPECT_THAT(HiddenTexts("a " + Uuid + "," + Hash), ElementsAre(Uuid, Hash));
    EXPECT_THAT(HiddenTexts(Hash + "00"), ElementsAre(Hash + "00"));
    EXPECT_THAT(HiddenTexts("00:1b:44:11:3a:b7 00-1B-44-11-3A-B7"),
                ElementsAre("00:1b:44:11:3a:b7", "00-1B-44-11-3A-B7"));
}

TEST(HiddenParts, LooksThatAreNoIdentifiers) {
    for (const std::string& text : {Uuid.substr(1), Hash.substr(1), std::string(64, 'a'),
                                    std::string(64, '1'), std::string("00:1b:44:11:3a:b7f"), std::string()})
        EXPECT_THAT(HiddenTexts(text), IsEmpty()) << text;
}

TEST(HiddenParts, UserInAPath) {
    for (const char* text :
         {R"(C:\Users\ann\x)", R"("C:\\Users\\ann\\x")", R"(D:\home\ann)", "file:///home/ann/x",
          "C:/Users/ann/x", R"(\\server\c\Documents and Settings\ann\x)", R"(c:\USERS\ann")"})
        EXPECT_THAT(HiddenTexts(text), ElementsAre("ann")) << text;
    EXPECT_THAT(HiddenTexts(R"(C:\Users\Ann Smith\x)"), ElementsAre("Ann Smith"));
    for (const char* text :
         {"/home/list", "/Users/x", R"(C:\Program Files\x)", R"(C:\Users)", R"(C:\Users\)"})
        EXPECT_THAT(HiddenTexts(text), IsEmpty()) << text;
}

TEST(HiddenParts, UserAndPasswordOfAUrl) {
    EXPECT_THAT(HiddenTexts("see https://ann:pw@host/x"), ElementsAre("ann:pw"));
    EXPECT_THAT(HiddenTexts("https://ann@host/"), ElementsAre("ann"));
    for (const char* text : {"https://host/ann@x", "https://host?a=b@c", "mail ann@host", "a://"})
        EXPECT_THAT(HiddenTexts(text), IsEmpty()) << text;
}

} // namespace Zuvan::Lumeq::Tool
