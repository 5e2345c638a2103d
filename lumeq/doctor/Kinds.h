// Everything that the doctor can find wrong, as one table. docs/doctor.md is written from it.
#pragma once

#include <string_view>

namespace Zuvan::Lumeq::Tool::Doctor {

/// In the order in which they stop delivery.
enum class Check { Host, Registry, Choice, Factory, Local, Runtime, Wmi, Network, Log };

/// What a finding does to delivery, the worst first.
enum class Effect {
    StopsAll,    ///< Nothing arrives.
    LosesEvents, ///< Only the one message about the machine can arrive.
    Warns,       ///< Delivery goes on, but something is wrong or slow.
    Notes,       ///< Worth knowing.
};

enum class Id {
    HostIs32Bit,
    LibraryNotLoaded,
    LibraryMissing,
    LibraryIsNot64Bit,
    LibraryIsDouble,
    TrackingDisabled,
    ChoiceMissing,
    ChoiceIsNo,
    ChoiceInvalid,
    PauseLeft,
    FactoryMissing,
    FactoryShadowed,
    FactoryRefused,
    FactoryNotExamined,
    ProjectMissing,
    ProjectOdd,
    ServerMissing,
    ServerUnusable,
    ServerCut,
    TokenMissing,
    TokenUnprintable,
    DeployedIdScrubbed,
    KeyUnknown,
    KeyTwice,
    LocalDamaged,
    LocalUnreadable,
    LocalReadOnly,
    LocalNotShared,
    LocalElsewhere,
    RuntimeMissing,
    CompanionMissing,
    CompanionIsNot64Bit,
    CompanionDoesNotLoad,
    CompanionCrashes,
    CompanionLacksOperation,
    WmiSilent,
    WmiSlow,
    WmiHangs,
    NameUnknown,
    ProxyAutomatic,
    ProxyRefuses,
    ServerUnreachable,
    HandshakeFails,
    CertificateUntrusted,
    CertificateExpired,
    CertificateNameWrong,
    LogOn,
    LogSettingInvalid,
    LogHasNoFolder,
    LogMutexHeld,
    Count
};

struct Kind {
    Id id;
    const char* name;
    Check check;
    Effect effect;
    const char* cause;
    const char* remedy;
};

const Kind& KindOf(Id id);

const char* NameOf(Check check);
const char* NameOf(Effect effect);
Check CheckNamed(std::string_view name); ///< Throws std::runtime_error for another name.

} // namespace Zuvan::Lumeq::Tool::Doctor
