// Makes the scripted companion need another library to be loaded.

extern "C" __declspec(dllimport) int CompanionDependency();

extern "C" __declspec(dllexport) int ScriptedCompanion_Dependency() { return CompanionDependency(); }
