// Counts the entities of a text DXF by nothing but its lines, for comparison with what the program says.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

struct EntityCount {
    int all = 0;    ///< in the section ENTITIES
    int hidden = 0; ///< of model space, on a layer that is off or frozen, or with the flag of invisible ones
};

/// By the text of group 0. Vertices, attributes and ends of sequences count as hidden by themselves only.
std::map<std::string, EntityCount> countEntities(const std::filesystem::path& path);
/// Whether it is a binary DXF, which has no lines.
bool isBinaryDxf(const std::filesystem::path& path);
/// The DXF files of a folder and its folders, in order of their names.
std::vector<std::filesystem::path> drawingsIn(const std::string& folder);
