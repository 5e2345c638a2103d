// What is wrong with a server's certificate. Includes windows.h: for source files only.
#pragma once

#include "lumeq/doctor/TlsClient.h"

#include <windows.h>

#include <wincrypt.h>

namespace Zuvan::Lumeq::Tool::Doctor {

Certificate JudgeCertificate(PCCERT_CONTEXT certificate, const std::wstring& server);

} // namespace Zuvan::Lumeq::Tool::Doctor
