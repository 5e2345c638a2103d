#include <Lumeq/lumeq.h>

int main(void) {
    return lumeq_abi() == LUMEQ_ABI_NUMBER ? 0 : 1;
}
