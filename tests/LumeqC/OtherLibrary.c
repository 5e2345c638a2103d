// A LumeqC.dll of another version: ABI is its number, and it has no function but this.
__declspec(dllexport) unsigned lumeq_abi(void);

unsigned lumeq_abi(void) { return ABI; }
