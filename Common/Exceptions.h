// The exceptions that report every failure inside the library. The exported functions catch them all.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace Zuvan::Lumeq::Common {

/// `what()` is the message only, in UTF-8; FullMessage() adds the details of the derived class.
class VestoException : public std::runtime_error {
public:
    /// Throws std::range_error if `message` is not valid UTF-16.
    explicit VestoException(const std::wstring& message);

    virtual std::wstring FullMessage() const;

private:
    std::wstring _message;
};

class ArgumentException : public VestoException {
public:
    ArgumentException(const std::wstring& paramName, const std::wstring& message);

    std::wstring FullMessage() const override;

private:
    std::wstring _paramName;
};

class ArgumentOutOfRangeException : public ArgumentException {
public:
    ArgumentOutOfRangeException(const std::wstring& paramName, const std::wstring& message,
                                const std::wstring& actualValue);

    std::wstring FullMessage() const override;

private:
    std::wstring _actualValue;
};

class ValidationErrorException : public ArgumentException {
public:
    ValidationErrorException(const std::wstring& paramName, const std::wstring& message,
                             const std::wstring& actualValue);

    std::wstring FullMessage() const override;

private:
    std::wstring _actualValue;
};

class InvalidOperationException : public VestoException {
public:
    using VestoException::VestoException;
};

class ComException : public VestoException {
public:
    ComException(const std::wstring& message, std::int32_t hresult);

    std::wstring FullMessage() const override;

private:
    std::int32_t _hresult;
};

class FileNotFoundException : public VestoException {
public:
    FileNotFoundException(const std::wstring& path, const std::wstring& message);

    std::wstring FullMessage() const override;

private:
    std::wstring _path;
};

class FileFormatException : public VestoException {
public:
    FileFormatException(const std::wstring& path, const std::wstring& message);

    std::wstring FullMessage() const override;

private:
    std::wstring _path;
};

} // namespace Zuvan::Lumeq::Common
