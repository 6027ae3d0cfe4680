#pragma once

#include <mutex>

namespace Tavrin::Vision::DeepLearning::Private {

// Guards the tables of open files and clones and the parameter cache. A workspace closes from
// the destructor of its last clone, on whatever thread drops it and without the access lock, so
// the tables need a lock of their own. It is taken after the access lock, never before it, and
// again by the same thread when dropping a master brings its destructor back to the tables.
std::recursive_mutex& WorkspaceTablesMutex();

} // namespace Tavrin::Vision::DeepLearning::Private
