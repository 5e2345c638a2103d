// A library that one scripted companion needs.

extern "C" __declspec(dllexport) int CompanionDependency() { return 1; }
