#include "Common/Exceptions.h"

#include "Common/Format.h"
#include "Common/Utf.h"

namespace Zuvan::Lumeq::Common {

namespace {

std::wstring WithActualValue(const std::wstring& text, const std::wstring& actualValue) {
    return actualValue.empty() ? text : text + L"\nActual value was " + actualValue + L".";
}

std::wstring WithPath(const std::wstring& text, const std::wstring& path) {
    return text + L"\nPath: \"" + path + L"\"";
}

} // namespace

VestoException::VestoException(const std::wstring& message)
    : std::runtime_error(ToUtf8(message)), _message(message) {}

std::wstring VestoException::FullMessage() const { return _message; }

ArgumentException::ArgumentException(const std::wstring& paramName, const std::wstring& message)
    : VestoException(message), _paramName(paramName) {}

std::wstring ArgumentException::FullMessage() const {
    const std::wstring message = VestoException::FullMessage();
    return _paramName.empty() ? message : message + L"\nParameter name: " + _paramName;
}

ArgumentOutOfRangeException::ArgumentOutOfRangeException(const std::wstring& paramName,
                                                         const std::wstring& message,
                                                         const std::wstring& actualValue)
    : ArgumentException(paramName, message), _actualValue(actualValue) {}

std::wstring ArgumentOutOfRangeException::FullMessage() const {
    return WithActualValue(ArgumentException::FullMessage(), _actualValue);
}

ValidationErrorException::ValidationErrorException(const std::wstring& paramName, const std::wstring& message,
                                                   const std::wstring& actualValue)
    : ArgumentException(paramName, message), _actualValue(actualValue) {}

std::wstring ValidationErrorException::FullMessage() const {
    return WithActualValue(ArgumentException::FullMessage(), _actualValue);
}

ComException::ComException(const std::wstring& message, std::int32_t hresult)
    : VestoException(message), _hresult(hresult) {}

std::wstring ComException::FullMessage() const {
    const auto number = static_cast<std::uint32_t>(_hresult);
    return VestoException::FullMessage() + FormatBounded(32, L"\nHRESULT: 0x%08X", number).text;
}

FileNotFoundException::FileNotFoundException(const std::wstring& path, const std::wstring& message)
    : VestoException(message), _path(path) {}

std::wstring FileNotFoundException::FullMessage() const {
    return WithPath(VestoException::FullMessage(), _path);
}

FileFormatException::FileFormatException(const std::wstring& path, const std::wstring& message)
    : VestoException(message), _path(path) {}

std::wstring FileFormatException::FullMessage() const {
    return WithPath(VestoException::FullMessage(), _path);
}

} // namespace Zuvan::Lumeq::Common
