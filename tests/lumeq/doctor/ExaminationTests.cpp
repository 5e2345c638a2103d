// What the doctor makes of values, without a machine that has them.
#include "lumeq/doctor/Examination.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Tool::Doctor {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::vector<Setting> GoodSettings = {
    {L"ProjectId", L"P1"}, {L"LUMServerUri", L"https://server.example"}, {L"AuthenticationToken", L"gbxra9"}};

Examination OfFactory(std::vector<Setting> settings) {
    Examination examination;
    examination.host.path = L"C:\\nowhere\\scan.exe";
    examination.factory = {L"C:\\nowhere\\LumeqConfig.xml", true, "", std::move(settings)};
    CheckFactory(examination);
    return examination;
}

Examination OfFactory(const std::wstring& key, const std::wstring& value) {
    std::vector<Setting> settings = GoodSettings;
    for (Setting& setting : settings)
        if (setting.key == key)
            setting.value = value;
    return OfFactory(settings);
}

std::vector<std::string> FoundIn(const Examination& examination) {
    std::vector<std::string> names;
    for (const Finding& finding : examination.report.Findings())
        if (finding.id)
            names.emplace_back(KindOf(*finding.id).name);
    return names;
}

std::vector<std::string> ChoiceFound(std::vector<Setting> settings) {
    Examination examination;
    examination.local = {L"C:\\nowhere\\LumeqLocalSettings.xml", true, "", std::move(settings)};
    CheckChoice(examination);
    return FoundIn(examination);
}

} // namespace

TEST(DoctorFactory, GoodSettings) { EXPECT_THAT(FoundIn(OfFactory(GoodSettings)), IsEmpty()); }

TEST(DoctorFactory, ServerIsWhatFollowsTheLastSlash) {
    const std::vector<std::pair<std::wstring, std::wstring>> servers = {{L"https://a.example", L"a.example"},
                                                                        {L"a.example", L"a.example"},
                                                                        {L"http://10.0.0.1", L"10.0.0.1"}};
    for (const auto& [uri, server] : servers) {
        const Examination examination = OfFactory(L"LUMServerUri", uri);
        EXPECT_THAT(FoundIn(examination), IsEmpty());
        EXPECT_EQ(UsableServer(examination.factory), server);
    }
}

TEST(DoctorFactory, ServersThatAreNoName) {
    for (const wchar_t* uri : {L"https://a.example/", L"/", L"https://a.example:8443", L"https://a b", L"a?x",
                               L"a#b", L"u@a", L"https://\u00e4\u4e00.example", L"a\tb"}) {
        const Examination examination = OfFactory(L"LUMServerUri", uri);
        EXPECT_THAT(FoundIn(examination), ElementsAre("server-unusable"));
        EXPECT_EQ(UsableServer(examination.factory), L"");
    }
}

TEST(DoctorFactory, PathBeforeTheServer) {
    for (const wchar_t* uri : {L"https://a.example/api", L"a.example/api"}) {
        const Examination examination = OfFactory(L"LUMServerUri", uri);
        EXPECT_THAT(FoundIn(examination), ElementsAre("server-cut"));
        EXPECT_EQ(UsableServer(examination.factory), L"api") << "as the library takes it";
    }
}

TEST(DoctorFactory, BlankValues) {
    EXPECT_THAT(FoundIn(OfFactory(L"LUMServerUri", L" ")), ElementsAre("server-missing"));
    EXPECT_THAT(FoundIn(OfFactory(L"ProjectId", L"\t ")), ElementsAre("project-missing"));
    EXPECT_THAT(FoundIn(OfFactory(L"AuthenticationToken", L"")), ElementsAre("token-missing"));
}

TEST(DoctorFactory, Projects) {
    EXPECT_THAT(FoundIn(OfFactory(L"ProjectId", L"aZ09-._~")), IsEmpty());
    for (const wchar_t* project : {L"P 1", L" P1", L"P/1", L"P\u0100"})
        EXPECT_THAT(FoundIn(OfFactory(L"ProjectId", project)), ElementsAre("project-odd"));
}

TEST(DoctorFactory, TokensThatDoNotDecodeToPrintableText) {
    for (const wchar_t* token : {L"a b", L"a\tb", L"\u00e9", L"a\n", L"\xd800"})
        EXPECT_THAT(FoundIn(OfFactory(L"AuthenticationToken", token)), ElementsAre("token-unprintable"));
    EXPECT_THAT(FoundIn(OfFactory(L"AuthenticationToken", L"!Nm.-_~+/=9")), IsEmpty());
}

TEST(DoctorFactory, TokenIsNeverShown) {
    for (const wchar_t* token : {L"gbxra9", L"gbx ra9"}) {
        const Examination examination = OfFactory(L"AuthenticationToken", token);
        for (const Finding& finding : examination.report.Findings()) {
            EXPECT_THAT(finding.detail, Not(testing::HasSubstr("ra9")));
            EXPECT_THAT(finding.detail, Not(testing::HasSubstr("en9")));
        }
    }
}

TEST(DoctorFactory, KeysThatAreUnknownOrThereTwice) {
    std::vector<Setting> settings = GoodSettings;
    for (const wchar_t* key : {L"projectid", L"UserOptIn", L"ProjectId", L"ProjectId"})
        settings.push_back({key, L"x"});
    EXPECT_THAT(FoundIn(OfFactory(settings)), ElementsAre("key-unknown", "key-unknown", "key-twice"));
}

TEST(DoctorChoice, Values) {
    EXPECT_THAT(ChoiceFound({{L"UserOptIn", L"TRUE"}}), IsEmpty());
    EXPECT_THAT(ChoiceFound({{L"UserOptIn", L"false"}}), ElementsAre("choice-is-no"));
    EXPECT_THAT(ChoiceFound({}), ElementsAre("choice-missing"));
    EXPECT_THAT(ChoiceFound({{L"UserOptIn", L" "}}), ElementsAre("choice-missing"));
    EXPECT_THAT(ChoiceFound({{L"UserOptIn", L"yes"}}), ElementsAre("choice-invalid"));
}

TEST(DoctorChoice, PauseHidesTheChoiceAndAnOddMarkIsNone) {
    EXPECT_THAT(ChoiceFound({{L"UserOptIn", L"False"}, {L"OptinBeforePause", L"True"}}),
                ElementsAre("pause-left"));
    EXPECT_THAT(ChoiceFound({{L"UserOptIn", L"True"}, {L"OptinBeforePause", L"x"}}), IsEmpty());
}

TEST(DoctorReport, BlockerIsTheFirstOfTheWorst) {
    Report report;
    EXPECT_EQ(report.Blocker(), nullptr);
    report.Well(Check::Host, "");
    report.Wrong(Id::ServerCut, "");
    report.Wrong(Id::ProxyAutomatic, "");
    EXPECT_EQ(report.Blocker(), nullptr) << "warnings and notes block nothing";
    report.Wrong(Id::RuntimeMissing, "");
    EXPECT_EQ(report.Blocker()->id, Id::RuntimeMissing);
    report.Wrong(Id::NameUnknown, "");
    report.Wrong(Id::HandshakeFails, "");
    EXPECT_EQ(report.Blocker()->id, Id::NameUnknown);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
