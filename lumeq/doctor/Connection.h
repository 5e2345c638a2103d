// A TCP connection that gives up after a time.
#pragma once

#include <winsock2.h>

#include <string>

namespace Zuvan::Lumeq::Tool::Doctor {

class Connection {
public:
    /// Throws NameFailure or ConnectionFailure.
    Connection(const std::wstring& name, const std::wstring& port, unsigned long milliseconds);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const std::string& Address() const { return _address; }
    /// Throws ConnectionFailure.
    void Send(const void* bytes, std::size_t count);
    /// At least one byte. Throws ConnectionFailure, also if the other side has closed the connection.
    std::string Receive();

private:
    void Connect(const std::wstring& name, const std::wstring& port, unsigned long milliseconds);

    SOCKET _socket = INVALID_SOCKET;
    std::string _address;
};

struct NetworkFailure {
    std::string words;
    std::string address;
};
struct NameFailure : NetworkFailure {};
struct ConnectionFailure : NetworkFailure {};

} // namespace Zuvan::Lumeq::Tool::Doctor
