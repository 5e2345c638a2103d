// Makes this machine trust a root certificate. For machines that belong to a test.
//   trust-root.exe FILE    a certificate in DER
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>
#include <wincrypt.h>

namespace {

std::vector<BYTE> ReadAll(const wchar_t* path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool AddToRoots(const std::vector<BYTE>& certificate) {
    const HCERTSTORE roots = CertOpenSystemStoreW(0, L"ROOT");
    if (!roots)
        return false;
    const bool added = CertAddEncodedCertificateToStore(roots, X509_ASN_ENCODING, certificate.data(),
                                                        static_cast<DWORD>(certificate.size()),
                                                        CERT_STORE_ADD_REPLACE_EXISTING, nullptr) != FALSE;
    return CertCloseStore(roots, 0) && added;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fputs("usage: trust-root FILE\n", stderr);
        return 2;
    }
    if (!AddToRoots(ReadAll(arguments[1]))) {
        std::fwprintf(stderr, L"trust-root: cannot add %ls\n", arguments[1]);
        return 1;
    }
    return 0;
}
