// day-c [worker]: plays the day; with the worker thread if there is any argument.
#include "day.h"

int main(int count, char** arguments) {
    (void)arguments;
    return play_day(count > 1) ? 0 : 1;
}
