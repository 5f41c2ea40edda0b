// Files and folders that must not outlive a run: their names, the locks that tell those of a running program
// from those that a killed one left, and their removal when a signal ends the program.
#pragma once

#include <string>

namespace host {

/// A name that is free, from the stem on: "<stem>.torva-<number>".
std::string temporaryName(const std::string& stem);
/// Whether `path` has a name of this kind, with or without more behind it.
bool isTemporaryName(const std::string& path);

/// Takes care of a file or folder that was just made: locked until released, removed by removeTemporaries().
/// `descriptor` is one of it, which the caller goes on owning.
void guardTemporary(const std::string& path, int descriptor);
/// It was removed, or has its final name.
void releaseTemporary(const std::string& path);
/// It was renamed: guarded on where the new name is a temporary one, else released.
void renameTemporary(const std::string& from, const std::string& to);

/// Removes files of temporary names in a folder that nobody has a lock on.
void removeAbandonedFiles(const std::string& folder);
/// Removes folders of this user in `folder` whose names begin with `stem`, and that nobody has a lock on.
void removeAbandonedFolders(const std::string& folder, const std::string& stem);

/// Removes all that this process guards. May be called by a handler of signals.
void removeTemporaries();

} // namespace host
