// Copies its argument into a buffer of eight bytes, whatever its length, so that the stack protector must
// notice.
#include <cstdio>

namespace {

__attribute__((noinline)) void Copy(const char* text) {
    char buffer[8];
    char* volatile start = buffer; // keeps the compiler from removing the copy
    char* at = start;
    for (; *text != '\0'; ++text)
        *at++ = *text;
    *at = '\0';
    std::puts(buffer);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2)
        return 1;
    Copy(arguments[1]);
    std::puts("returned");
    return 0;
}
