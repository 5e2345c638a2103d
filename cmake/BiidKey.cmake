# The key of the hash that makes device identifiers. Identifiers of two builds are comparable only if both have the same
# key, so every deployment configures its own key and keeps it:
#   cmake --preset mingw -D LUMEQ_BIID_KEY=<128 lower-case hexadecimal digits>
# The default is for development only. It is public, so identifiers made with it hide nothing.
set(LUMEQ_BIID_KEY
    "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"
    CACHE STRING "Key of the device identifiers: 128 lower-case hexadecimal digits, used unchanged")

string(LENGTH "${LUMEQ_BIID_KEY}" _length)
if(NOT _length EQUAL 128 OR NOT LUMEQ_BIID_KEY MATCHES "^[0-9a-f]+$")
  message(
    FATAL_ERROR "LUMEQ_BIID_KEY must hold exactly 128 lower-case hexadecimal digits (0-9, a-f); its value "
                "has ${_length} characters, or contains others.")
endif()
