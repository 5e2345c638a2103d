// Posts one request as the library's worker does, and prints the received answer byte by byte.
//   lumeq_posting_program SERVER
#include "LumeqShim/Post/HttpsPost.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <string>

int wmain(int argumentCount, wchar_t** arguments) {
    if (argumentCount != 2)
        return 1;
    std::string answer;
    Zuvan::LumeqShim::Post(arguments[1], L"/", L"Content-Length:1\r\n", "1", answer);
    _setmode(_fileno(stdout), _O_BINARY);
    std::fwrite(answer.data(), 1, answer.size(), stdout);
    return 0;
}
