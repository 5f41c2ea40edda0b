// The one road to files that are read by name, and the folders that a run may be confined to.
#pragma once

#include <string>
#include <vector>

namespace host {

/// A descriptor for reading of a regular file, -1 with errno where there is none. Never waits: a pipe, a
/// device and a folder are refused (EINVAL). Confined, what isn't below one of the folders is refused
/// (EACCES).
int openRegular(const std::string& path);
/// Whether openRegular would find a regular file there.
bool isRegular(const std::string& path);
/// Whether a file may be made, replaced or removed there: true unless confined to folders elsewhere.
bool mayWrite(const std::string& path);
/// The same of a folder that is to be made, with those above it.
bool mayWriteBelow(const std::string& folder);

/// From now on only files below these folders are read and written; with none, all are. What the program
/// itself brings along is named by `readable` and can be read besides. A folder that doesn't exist: its name;
/// else empty.
std::string confineTo(const std::vector<std::string>& folders, const std::vector<std::string>& readable = {});
/// A folder of the run's own, which a confined one may use too.
void allowBelow(const std::string& folder);
bool isConfined();

} // namespace host
