#include "samples/host/CAdapters.h"

#include <cerrno>
#include <list>

namespace SampleHost {

namespace {

void StartupEx(const std::wstring& appName, API::WhyType why, API::HowType how, bool systemInfo,
               bool queueInfo) {
    C<decltype(lumeq_startup)>("lumeq_startup")(appName.c_str(), Number(why), Number(how), systemInfo,
                                                queueInfo);
}
void ShutdownEx(std::int32_t timeout) { C<decltype(lumeq_shutdown)>("lumeq_shutdown")(timeout); }
void FlushEx(std::int32_t timeout) { C<decltype(lumeq_flush)>("lumeq_flush")(timeout); }
void Pause() { C<decltype(lumeq_pause)>("lumeq_pause")(); }
void Resume() { C<decltype(lumeq_resume)>("lumeq_resume")(); }
void SetUserOptInEx(bool optIn) { C<decltype(lumeq_set_opt_in)>("lumeq_set_opt_in")(optIn); }
bool GetUserOptInEx() { return C<decltype(lumeq_get_opt_in)>("lumeq_get_opt_in")() != 0; }
void SetLocalSubfolderPathEx(const std::wstring& subpath) {
    C<decltype(lumeq_set_local_subfolder)>("lumeq_set_local_subfolder")(subpath.c_str());
}
void TrackPrintQueueInfoEx() { C<decltype(lumeq_track_print_queue_info)>("lumeq_track_print_queue_info")(); }
void TrackSystemInformationEx() {
    C<decltype(lumeq_track_system_information)>("lumeq_track_system_information")();
}
void SetGlobalContextEx(const wchar_t* model) {
    C<decltype(lumeq_set_global_context)>("lumeq_set_global_context")(model);
}

void TrackDiscoveredPrintersEx(const API::DiscoveredDeviceList& devices) {
    std::list<Fields> owned;
    std::vector<lumeq_dictionary> list;
    for (const API::DiscoveredDevice& device : devices) {
        list.push_back(*owned.emplace_back(&device.information).Get());
    }
    C<decltype(lumeq_track_discovered_printers)>("lumeq_track_discovered_printers")(list.data(), list.size());
}

/// What wcscpy_s returns for such a buffer and a text that needs so much.
std::int32_t CopyResult(const wchar_t* buffer, std::size_t size, std::size_t needed) {
    if (buffer == nullptr || size == 0)
        return EINVAL;
    return needed > size ? ERANGE : 0;
}

constexpr std::size_t LongestText = 256;

std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* uuid) {
    return CopyResult(buffer, size, C<decltype(lumeq_get_biid)>("lumeq_get_biid")(uuid, buffer, size));
}
void GetBiid(const std::string& uuid, std::wstring& biid) {
    wchar_t buffer[LongestText];
    if (C<decltype(lumeq_get_biid)>("lumeq_get_biid")(uuid.c_str(), buffer, LongestText) != 0)
        biid = buffer;
}
std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, API::ConnectionMethodType method) {
    return CopyResult(buffer, size,
                      C<decltype(lumeq_connection_method_text)>("lumeq_connection_method_text")(
                          Number(method), buffer, size));
}
void ToString(API::ConnectionMethodType method, std::wstring& text) {
    wchar_t buffer[LongestText];
    if (C<decltype(lumeq_connection_method_text)>("lumeq_connection_method_text")(Number(method), buffer,
                                                                                  LongestText) != 0)
        text = buffer;
}

} // namespace

const Adapters& SessionAdapters() {
    // Not destroyed, because another thread may be calling while the process exits.
    static const Adapters& adapters = *new Adapters{
        {"StartupEx", Like<decltype(API::StartupEx)>(StartupEx)},
        {"ShutdownEx", Like<decltype(API::ShutdownEx)>(ShutdownEx)},
        {"FlushEx", Like<decltype(API::FlushEx)>(FlushEx)},
        {"Pause", Like<decltype(API::Pause)>(Pause)},
        {"Resume", Like<decltype(API::Resume)>(Resume)},
        {"SetUserOptInEx", Like<decltype(API::SetUserOptInEx)>(SetUserOptInEx)},
        {"GetUserOptInEx", Like<decltype(API::GetUserOptInEx)>(GetUserOptInEx)},
        {"SetLocalSubfolderPathEx", Like<decltype(API::SetLocalSubfolderPathEx)>(SetLocalSubfolderPathEx)},
        {"TrackPrintQueueInfoEx", Like<decltype(API::TrackPrintQueueInfoEx)>(TrackPrintQueueInfoEx)},
        {"TrackSystemInformationEx", Like<decltype(API::TrackSystemInformationEx)>(TrackSystemInformationEx)},
        {"SetGlobalContextEx", Like<decltype(API::SetGlobalContextEx)>(SetGlobalContextEx)},
        {"TrackDiscoveredPrintersEx",
         Like<decltype(API::TrackDiscoveredPrintersEx)>(TrackDiscoveredPrintersEx)},
        {"GetBiid", Like<decltype(API::GetBiid)>(GetBiid)},
        {"GetBiid_Internal", Like<decltype(API::GetBiid_Internal)>(GetBiid_Internal)},
        {"ToString", Like<decltype(API::ToString)>(ToString)},
        {"ToString_Internal", Like<decltype(API::ToString_Internal)>(ToString_Internal)},
    };
    return adapters;
}

} // namespace SampleHost
