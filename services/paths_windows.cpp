#include "services/paths_windows.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "services/code_page.h"
#include "services/paths.h"

namespace rws {

const char kSeparator = '\\';
const char kFirstDrive[] = "C:\\";

namespace {

constexpr std::wstring_view kLiteral = LR"(\\?\)", kLiteralShare = LR"(\\?\UNC\)";
constexpr std::wstring_view kDevices = LR"(\\.\)";
/** A folder's path must leave room for a short name in it, of the 260 that a call takes. */
constexpr std::size_t kLongest = 240;

bool HasDrive(std::string_view path) {
  const int letter = path.empty() ? 0 : path[0] | 0x20;
  return path.size() > 1 && path[1] == ':' && letter >= 'a' && letter <= 'z';
}

/** True for a name that the system keeps for a device, also before an extension. */
bool IsDevice(std::string_view name) {
  std::string base = FoldName(name.substr(0, name.find('.')));
  base.erase(base.find_last_not_of(' ') + 1);
  for (const char* device : {"con", "prn", "aux", "nul", "conin$", "conout$"})
    if (base == device) return true;
  if (!base.starts_with("com") && !base.starts_with("lpt")) return false;
  const std::string_view number = std::string_view(base).substr(3);
  for (const char* raised : {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"})
    if (number == raised) return true;
  return number.size() == 1 && number[0] >= '1' && number[0] <= '9';
}

bool EndsOddly(std::string_view name) {
  return name.ends_with(' ') || (name.ends_with('.') && name != "." && name != "..");
}

bool NeedsLiteral(const std::string& path) {
  std::string_view rest = path;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of("\\/"), rest.size());
    if (IsDevice(rest.substr(0, end)) || EndsOddly(rest.substr(0, end))) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

bool IsLiteral(std::wstring_view path) {
  return path.starts_with(kLiteral) || path.starts_with(kDevices);
}

/** How much of the path is its drive or share; 0 where it has none, or a drive alone. */
std::size_t RootLength(std::wstring_view path) {
  if (path.size() > 2 && path[1] == L':' && path[2] == L'\\') return 2;
  if (!path.starts_with(LR"(\\)")) return 0;
  const std::size_t server = path.find(L'\\', 2);
  if (server == path.npos) return path.size();
  return std::min(path.find(L'\\', server + 1), path.size());
}

/** The folder in which the program is, or is on a drive. */
std::wstring CurrentFolder(const std::wstring& of) {
  std::wstring folder(32768, L'\0');
  folder.resize(
      ::GetFullPathNameW(of.c_str(), static_cast<DWORD>(folder.size()), folder.data(), nullptr));
  return RootLength(folder) > 0 ? folder : L"C:\\";
}

/** Takes empty parts, "." and ".." out of what follows the root. */
std::wstring Tidy(std::wstring_view path) {
  const std::size_t root = RootLength(path);
  std::vector<std::wstring_view> parts;
  std::wstring_view rest = path.substr(root);
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(L'\\'), rest.size());
    const std::wstring_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (part == L"..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != L".") {
      parts.push_back(part);
    }
  }
  std::wstring tidy(path.substr(0, root));
  for (const auto part : parts) tidy.append(L"\\").append(part);
  if (parts.empty() || path.ends_with(L'\\')) tidy += L'\\';
  return tidy;
}

}  // namespace

bool IsDrive(std::string_view path) {
  const bool rooted = path.size() == 2 || (path.size() == 3 && IsSeparator(path[2]));
  return rooted && path[1] == ':';
}

std::string NameRefusal(std::string_view path) {
  std::string name = GetFileName(path);
  if (name.size() == path.size() && HasDrive(path)) name.erase(0, 2);
  if (std::any_of(name.begin(), name.end(), IsRefusedInName))
    return "it holds a character that a file name cannot have";
  if (IsDevice(name)) return "Windows keeps it for a device";
  if (EndsOddly(name)) return "it ends in a dot or a blank";
  return "";
}

std::wstring Wide(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = NextCharacter(text, at);
    if (c < 0x10000) {
      wide += static_cast<wchar_t>(c);
    } else if (c < 0x110000) {
      wide += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
      wide += static_cast<wchar_t>(0xDC00 + (c & 0x3FF));
    } else {
      wide += L'\xFFFD';
    }
  }
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i) {
    char32_t c = wide[i];
    const bool isPair =
        (c & 0xFC00) == 0xD800 && i + 1 < wide.size() && (char32_t{wide[i + 1]} & 0xFC00) == 0xDC00;
    if (isPair) c = 0x10000 + ((c & 0x3FF) << 10) + (char32_t{wide[++i]} & 0x3FF);
    AppendUtf8(text, c);
  }
  return text;
}

std::wstring FullPath(const std::string& path) {
  std::wstring full = Wide(path);
  std::replace(full.begin(), full.end(), L'/', L'\\');
  if (IsLiteral(full)) return full;
  if (RootLength(full) > 0) return Tidy(full);
  if (HasDrive(path)) return Tidy(CurrentFolder(full.substr(0, 2) + L".") + L"\\" + full.substr(2));
  // Wine takes "/" for the root of its host.
  const bool isRooted = !path.empty() && IsSeparator(path[0]);
  return Tidy(CurrentFolder(isRooted ? Wide(path.substr(0, 1)) : L".") + L"\\" + full);
}

std::wstring CallPath(const std::string& path) {
  if (path.empty()) return L"";
  const std::wstring full = FullPath(path);
  if (IsLiteral(full) || (full.size() < kLongest && !NeedsLiteral(path))) return full;
  if (full.starts_with(LR"(\\)")) return std::wstring(kLiteralShare).append(full, 2);
  return std::wstring(kLiteral) + full;
}

std::string PlainPath(std::wstring_view path) {
  if (path.starts_with(kLiteralShare)) return "\\\\" + Narrow(path.substr(kLiteralShare.size()));
  const bool isDrive =
      path.starts_with(kLiteral) && path.substr(kLiteral.size() + 1).starts_with(L':');
  return Narrow(isDrive ? path.substr(kLiteral.size()) : path);
}

}  // namespace rws
