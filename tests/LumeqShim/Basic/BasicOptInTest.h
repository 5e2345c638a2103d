// A machine with an opt-in store, and its operations.
#pragma once

#include "Common/Logger.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "support/ChildProcess.h"
#include "support/HostExecutable.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Zuvan::LumeqShim {

struct Operation {
    std::string name;
    std::function<bool()> call;
};

// Made once, so that the calls themselves do not allocate.
inline const std::wstring Key = UserOptInKey;

/// The four operations that use COM; false for BasicSetUserOptIn, which returns nothing.
inline std::vector<Operation> Operations() {
    return {{"BasicGetUserOptIn", [] { return BasicGetUserOptIn(Key); }},
            {"BasicSetUserOptIn",
             [] {
                 BasicSetUserOptIn(true, Key);
                 return false;
             }},
            {"BasicDidUserOpted", [] { return BasicDidUserOpted(Key); }},
            {"BasicClearOptIn", [] { return BasicClearOptIn(Key); }}};
}

class BasicOptIn : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    BasicOptIn() {
        _machine.WriteFactorySettings();
        // Loads the log's policy, so that a case finds only its own lines.
        Lumeq::Common::LogMessage(Lumeq::Common::SeverityLevel::DEBUG, L"", 0, nullptr, L"first");
        ClearLog();
        std::filesystem::remove_all(_machine.ProgramData() / "Zuvan");
    }

    void WriteLocal(const std::string& settings) const { WriteLocalFile(Document(settings)); }
    void WriteLocalFile(const std::string& content) const {
        Lumeq::Testing::WriteFile(_machine.LocalSettingsFile(), content);
    }
    std::string LocalFile() const {
        return WithoutLineEnds(Lumeq::Testing::ReadFile(_machine.LocalSettingsFile()));
    }
    static std::string Document(const std::string& settings) {
        return "<LumeqConfig version=\"4.0\">" + settings + "</LumeqConfig>";
    }
    static std::string WithoutLineEnds(std::string text) {
        std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
        return text;
    }
    std::ptrdiff_t FilesBesideTheLocalOne() const {
        const std::filesystem::directory_iterator files(_machine.LocalSettingsFile().parent_path());
        return std::distance(begin(files), end(files)) - 1;
    }

    void ClearLog() const { std::filesystem::remove(_machine.LogFile()); }
    std::vector<Lumeq::Testing::LoggedLine> Lines() const {
        return Lumeq::Testing::LogLines(_machine.LogFile());
    }
    Texts Warnings() const { return Lumeq::Testing::LogMessages(_machine.LogFile(), "WARNING"); }
    static bool IsOwn(const std::string& message) {
        return message.find(", f=") == std::string::npos && message.find(" took ") == std::string::npos;
    }
    /// The lines that the operation itself logged, without COM's balance and durations.
    Texts OwnLines() const {
        Texts messages;
        for (const Lumeq::Testing::LoggedLine& line : Lines())
            if (IsOwn(line.message))
                messages.push_back(line.message);
        return messages;
    }
    Texts OwnLinesOf(const std::function<void()>& call) const {
        ClearLog();
        call();
        return OwnLines();
    }

    Lumeq::Testing::ChildProcess Start(const std::wstring& command, const std::wstring& argument) const {
        return {_programs / "lumeq_opt_in_process.exe",
                {Lumeq::Testing::IsolatedMachine::FactorySettingsFile().wstring(),
                 _machine.LocalSettingsFile().wstring(), command, argument}};
    }

    // Before the machine makes the executable seem to be elsewhere.
    std::filesystem::path _programs = Lumeq::Testing::ExecutablePath().parent_path();
    Lumeq::Testing::IsolatedMachine _machine;
};

} // namespace Zuvan::LumeqShim
