#include <Lumeq/LumeqApi.h>

#include <cstdio>

namespace API = Zuvan::Lumeq::API;

int main() {
    std::wstring text;
    API::ToString(API::ConnectionMethodType::wifi_direct, text);

    const API::StringDictionary context{{L"paper", L"a4"}};
    API::TaskHandle task = API::PrintBasicInitiated(&context, nullptr);
    const bool opened = task != nullptr;
    API::PrintBasicCompleted(&task, L"success", API::Print::SubsystemType::native,
                             API::Print::ItemType::document, API::Print::MimeType::application_pdf,
                             API::Print::PageSizeType::full, L"A4", 1);

    std::printf("%ls, %s, %s\n", text.c_str(), opened ? "opened" : "not opened",
                task == nullptr ? "completed" : "not completed");
}
