# The key under which device identifiers are hashed. Identifiers of two builds are comparable only under the same
# key, so every deployment configures its own and keeps it:
#   cmake --preset mingw -D LUMEQ_BIID_KEY=<128 lower-case hexadecimal digits>
# The default serves development only: it is public, and so the identifiers made with it hide nothing.
set(LUMEQ_BIID_KEY
    "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"
    CACHE STRING "Key of the device identifiers: 128 lower-case hexadecimal digits, used as they stand")

string(LENGTH "${LUMEQ_BIID_KEY}" _length)
if(NOT _length EQUAL 128 OR NOT LUMEQ_BIID_KEY MATCHES "^[0-9a-f]+$")
  message(
    FATAL_ERROR "LUMEQ_BIID_KEY must hold exactly 128 lower-case hexadecimal digits (0-9, a-f); what it holds has "
                "${_length} characters, or other ones.")
endif()
