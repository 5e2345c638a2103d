#include "samples/host/CAdapters.h"

namespace SampleHost {

namespace {

void ScreenDisplayed(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                     const API::StringDictionary* local, const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    C<decltype(lumeq_screen_displayed)>("lumeq_screen_displayed")(&screen);
}

void Click(const char* function, const wchar_t* flow, const wchar_t* path, const std::wstring& name,
           const wchar_t* mode, const std::wstring& control, const API::StringDictionary* local,
           const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    C<decltype(lumeq_button_clicked)>(function)(&screen, control.c_str());
}
void ButtonClicked(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                   const std::wstring& control, const API::StringDictionary* local, const wchar_t* global) {
    Click("lumeq_button_clicked", flow, path, name, mode, control, local, global);
}
void TileClicked(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                 const std::wstring& control, const API::StringDictionary* local, const wchar_t* global) {
    Click("lumeq_tile_clicked", flow, path, name, mode, control, local, global);
}
void HyperlinkClicked(const wchar_t* flow, const wchar_t* path, const std::wstring& name, const wchar_t* mode,
                      const std::wstring& control, const API::StringDictionary* local,
                      const wchar_t* global) {
    Click("lumeq_hyperlink_clicked", flow, path, name, mode, control, local, global);
}
void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* path,
                     const std::wstring& name, const wchar_t* mode, const std::wstring& control,
                     const API::StringDictionary* local, const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    C<decltype(lumeq_checkbox_changed)>("lumeq_checkbox_changed")(&screen, control.c_str(), isChecked);
}

using AdExport = decltype(API::AdClicked);
template <const char* Function>
void Ad(API::AdType type, const std::wstring& product, const std::wstring& adName,
        const std::wstring& variant, const wchar_t* flow, const wchar_t* path, const std::wstring& name,
        const wchar_t* mode, const std::wstring& control, const API::StringDictionary* local,
        const wchar_t* global) {
    const Fields fields(local);
    const lumeq_screen screen = {sizeof screen, flow, path, name.c_str(), mode, fields.Get(), global};
    const lumeq_ad ad = {sizeof ad, product.c_str(), adName.c_str(), variant.c_str(), Number(type), 0};
    C<decltype(lumeq_ad_clicked)>(Function)(&screen, control.c_str(), &ad);
}
constexpr char AdDisplayedName[] = "lumeq_ad_displayed";
constexpr char AdClickedName[] = "lumeq_ad_clicked";
constexpr char AdClosedName[] = "lumeq_ad_closed";

void UrlLaunchedEx(const std::wstring& url, const API::StringDictionary* local, const wchar_t* global) {
    C<decltype(lumeq_url_launched)>("lumeq_url_launched")(url.c_str(), Fields(local).Get(), global);
}

template <const char* Function>
void SubmitForm(const std::wstring& org, const std::wstring& code, const std::wstring& name,
                const std::wstring& version, const API::StringDictionary& details,
                const API::StringDictionary* local, const wchar_t* global) {
    const Fields fields(local);
    const Fields detailFields(&details);
    const lumeq_form form = {sizeof form,     org.c_str(),         code.c_str(), name.c_str(),
                             version.c_str(), *detailFields.Get(), fields.Get(), global};
    C<decltype(lumeq_form_submitted)>(Function)(&form);
}
constexpr char FormSubmittedName[] = "lumeq_form_submitted";
constexpr char ReportGeneratedName[] = "lumeq_report_generated";

} // namespace

const Adapters& EventAdapters() {
    // Not destroyed, because another thread may be calling while the process exits.
    static const Adapters& adapters = *new Adapters{
        {"ScreenDisplayed", Like<decltype(API::ScreenDisplayed)>(ScreenDisplayed)},
        {"ButtonClicked", Like<decltype(API::ButtonClicked)>(ButtonClicked)},
        {"TileClicked", Like<decltype(API::TileClicked)>(TileClicked)},
        {"HyperlinkClicked", Like<decltype(API::HyperlinkClicked)>(HyperlinkClicked)},
        {"CheckboxChanged", Like<decltype(API::CheckboxChanged)>(CheckboxChanged)},
        {"AdDisplayed", Like<decltype(API::AdDisplayed)>(Ad<AdDisplayedName>)},
        {"AdClicked", Like<decltype(API::AdClicked)>(Ad<AdClickedName>)},
        {"AdClosed", Like<decltype(API::AdClosed)>(Ad<AdClosedName>)},
        {"UrlLaunchedEx", Like<decltype(API::UrlLaunchedEx)>(UrlLaunchedEx)},
        {"FormSubmitted", Like<decltype(API::FormSubmitted)>(SubmitForm<FormSubmittedName>)},
        {"ReportGenerated", Like<decltype(API::ReportGenerated)>(SubmitForm<ReportGeneratedName>)},
    };
    return adapters;
}

} // namespace SampleHost
