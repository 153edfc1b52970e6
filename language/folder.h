#pragma once

#include <list>
#include <string>

namespace kiva::language {

/// The source files of a folder, also of folders within it if `deep`, in order of their names; a
/// few hundred at most.
std::list<std::string> source_files(const std::string& folder, bool deep);

/// "file://..." of a path; other texts stay as they are. And back.
std::string uri_of(const std::string& path);
std::string path_of(const std::string& uri);

}  // namespace kiva::language
