// By which of its interfaces this host calls the library.
#pragma once

namespace SampleHost {

enum class Edge {
    Cpp,     ///< the exports of Lumeq.dll
    C,       ///< lumeq.h, calls made directly
    CQueued, ///< lumeq.h with its worker thread
};

/// What the environment variable LUMEQ_HOST_EDGE names: cpp, c or c-queued; unset means cpp. Throws
/// std::runtime_error for any other.
Edge ChosenEdge();

/// The name of the library to load.
const wchar_t* LibraryOf(Edge edge) noexcept;

/// What the edge needs once the library is loaded.
void Prepare(Edge edge, void* module);

/// Returns when all calls are made. Before the library is freed.
void Finish(Edge edge) noexcept;

/// Null if the library has no such export. Over lumeq.h: a function like the export of that name.
void* FindExport(Edge edge, void* module, const char* name) noexcept;

} // namespace SampleHost
