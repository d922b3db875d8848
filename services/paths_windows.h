#pragma once

#include <string>
#include <string_view>

/** Paths as the calls of Windows take them. For the sources of that system alone. */
namespace rws {

/** The UTF-16 of a path text. Half a surrogate pair, which a name on disk may hold, is the three
    bytes that UTF-8 would have for it: such a name comes back as it was. */
std::wstring Wide(std::string_view text);
std::string Narrow(std::wstring_view wide);

/** `path` from the drive or share on, with "\" alone, and "." and ".." taken out by spelling. */
std::wstring FullPath(const std::string& path);

/** `path` for a call of the system, from the drive or share on. It has the prefix by which the
    system takes it literally where it is longer than a call takes else, and where the system would
    take it for a device or drop a dot or blank at the end of a name. "" stays so. */
std::wstring CallPath(const std::string& path);

/** A path that the system gave, without that prefix. */
std::string PlainPath(std::wstring_view path);

}  // namespace rws
