#include "lumeq/doctor/Connection.h"

#include "Common/ComError.h"
#include "lumeq/doctor/Texts.h"

#include <array>
#include <memory>
#include <ws2tcpip.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

std::string ErrorText(int error) {
    return Utf8(Common::ComErrorText(HRESULT_FROM_WIN32(static_cast<DWORD>(error)))) + " (" +
           std::to_string(error) + ")";
}

using Addresses = std::unique_ptr<ADDRINFOW, decltype(&FreeAddrInfoW)>;

Addresses AddressesOf(const std::wstring& name, const std::wstring& port) {
    ADDRINFOW hints{};
    hints.ai_socktype = SOCK_STREAM;
    ADDRINFOW* found = nullptr;
    if (const int error = GetAddrInfoW(name.c_str(), port.c_str(), &hints, &found); error != 0)
        throw NameFailure{{ErrorText(error), {}}};
    return {found, &FreeAddrInfoW};
}

std::string TextOf(const ADDRINFOW& address) {
    std::array<wchar_t, NI_MAXHOST> text{};
    GetNameInfoW(address.ai_addr, static_cast<socklen_t>(address.ai_addrlen), text.data(),
                 static_cast<DWORD>(text.size()), nullptr, 0, NI_NUMERICHOST);
    return Utf8(text.data());
}

/// 0, or the error.
int ConnectWithin(SOCKET socket, const ADDRINFOW& address, unsigned long milliseconds) {
    u_long nonBlocking = 1;
    ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking);
    if (connect(socket, address.ai_addr, static_cast<int>(address.ai_addrlen)) != 0 &&
        WSAGetLastError() != WSAEWOULDBLOCK)
        return WSAGetLastError();
    fd_set connected{}, failed{};
    FD_SET(socket, &connected);
    FD_SET(socket, &failed);
    timeval limit{static_cast<long>(milliseconds / 1000), static_cast<long>(milliseconds % 1000 * 1000)};
    if (select(0, nullptr, &connected, &failed, &limit) == 0)
        return WSAETIMEDOUT;
    int error = 0;
    int size = sizeof error;
    getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size);
    nonBlocking = 0;
    ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking);
    return error;
}

void LimitWaits(SOCKET socket, unsigned long milliseconds) {
    const DWORD limit = milliseconds;
    for (const int option : {SO_RCVTIMEO, SO_SNDTIMEO})
        setsockopt(socket, SOL_SOCKET, option, reinterpret_cast<const char*>(&limit), sizeof limit);
}

} // namespace

Connection::Connection(const std::wstring& name, const std::wstring& port, unsigned long milliseconds) {
    WSADATA data{};
    if (const int error = WSAStartup(MAKEWORD(2, 2), &data); error != 0)
        throw ConnectionFailure{{ErrorText(error), {}}};
    try {
        Connect(name, port, milliseconds);
    } catch (...) {
        WSACleanup();
        throw;
    }
}

Connection::~Connection() {
    closesocket(_socket);
    WSACleanup();
}

void Connection::Connect(const std::wstring& name, const std::wstring& port, unsigned long milliseconds) {
    const Addresses addresses = AddressesOf(name, port);
    int error = 0;
    for (const ADDRINFOW* address = addresses.get(); address; address = address->ai_next) {
        _address = TextOf(*address);
        _socket = socket(address->ai_family, SOCK_STREAM, IPPROTO_TCP);
        error =
            _socket == INVALID_SOCKET ? WSAGetLastError() : ConnectWithin(_socket, *address, milliseconds);
        if (error == 0) {
            LimitWaits(_socket, milliseconds);
            return;
        }
        closesocket(_socket);
    }
    throw ConnectionFailure{{ErrorText(error), _address}};
}

void Connection::Send(const void* bytes, std::size_t count) {
    if (send(_socket, static_cast<const char*>(bytes), static_cast<int>(count), 0) != static_cast<int>(count))
        throw ConnectionFailure{{ErrorText(WSAGetLastError()), _address}};
}

std::string Connection::Receive() {
    std::array<char, 4096> bytes;
    const int count = recv(_socket, bytes.data(), static_cast<int>(bytes.size()), 0);
    if (count == 0)
        throw ConnectionFailure{{"the other side closed the connection", _address}};
    if (count < 0)
        throw ConnectionFailure{{ErrorText(WSAGetLastError()), _address}};
    return {bytes.data(), static_cast<std::size_t>(count)};
}

} // namespace Zuvan::Lumeq::Tool::Doctor
