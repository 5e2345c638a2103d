#include <Lumeq/lumeq_test.h>

#include <stddef.h>
#include <stdio.h>
#include <string.h>

#include "toolbar.h"

static int failures = 0;

static void expect_none(const char* problem) {
    if (problem) {
        puts(problem);
        ++failures;
    }
}

static void records_the_button(void) {
    lumeq_test_reset();
    toolbar_press(L"print");
    expect_none(LUMEQ_TEST_MISSING("ButtonClicked", {"screenName", "Toolbar"}, {"controlName", "print"}));
    expect_none(lumeq_test_refusal(0));
}

static void notices_a_name_that_lumeq_refuses(void) {
    lumeq_test_reset();
    toolbar_press(L"print!");
    expect_none(lumeq_test_event(0));
    if (lumeq_test_refusal_count() != 1 || !strstr(lumeq_test_refusal(0), "\"argument\":\"controlName\""))
        expect_none(lumeq_test_describe());
}

int main(void) {
    records_the_button();
    notices_a_name_that_lumeq_refuses();
    printf("%d failures\n", failures);
    return failures;
}
