#include "services/ini_settings.h"

#include <vector>

#include "services/ini_escapes.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

/** Far more than all settings together: what is larger is another file. */
constexpr std::uint64_t kMostBytes = 16 << 20;
constexpr int kMostWait = 3000;
/** Some editors put it in front. */
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string_view HeaderOf(SettingsRoot root) {
  return root == SettingsRoot::CurrentUser ? "[HKEY_CURRENT_USER]" : "[HKEY_CLASSES_ROOT]";
}

std::string SpelledPath(std::string_view key, std::string_view name) {
  const std::string inKey = key.empty() ? "" : EscapedKey(key) + "\\";
  // The value of a key itself has no name.
  return inKey + (name.empty() ? "." : EscapedKey(name));
}

std::string_view KeyOf(std::string_view line) { return Trim(line.substr(0, line.find('='))); }

std::string_view WithoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/** The lines of such a file, of which one root's are looked at. */
class StoreLines {
 public:
  StoreLines(std::string_view bytes, SettingsRoot root)
      : root_(root), lines_(SplitAt(bytes, '\n')) {
    if (lines_.back().empty()) lines_.pop_back();
  }

  /** Calls `visit(line number)` for each line with a value, in order. */
  template <class Visit>
  void ForEachValue(Visit visit) {
    bool isOurs = false;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      std::string_view line = Trim(WithoutReturn(lines_[i]));
      if (i == 0 && line.starts_with(kUtf8Mark)) line.remove_prefix(kUtf8Mark.size());
      if (line.starts_with('['))
        isOurs = EqualNoCase(line, HeaderOf(root_));
      else if (!isOurs || line.empty())
        continue;
      end_ = isOurs ? i + 1 : end_;
      if (isOurs && Contains(line, "=")) visit(i);
    }
  }

  /** The line of a value; of two the later one counts. */
  std::optional<std::size_t> Find(const std::string& path) {
    std::optional<std::size_t> found;
    ForEachValue([&](std::size_t i) {
      if (EqualNoCase(KeyOf(lines_[i]), path)) found = i;
    });
    return found;
  }

  std::string_view ValueAt(std::size_t line) const {
    return WithoutReturn(lines_[line].substr(lines_[line].find('=') + 1));
  }

  std::string With(const std::string& path, const std::string& value) {
    const auto found = Find(path);
    const std::string line = (found ? std::string(KeyOf(lines_[*found])) : path) + "=" + value +
                             (found && lines_[*found].ends_with('\r') ? "\r" : "");
    if (found) {
      lines_[*found] = line;
    } else {
      if (end_ == 0) {
        lines_.push_back(HeaderOf(root_));
        end_ = lines_.size();
      }
      lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(end_), line);
    }
    return Text();
  }

  std::string Without(const std::string& key) {
    std::vector<bool> goes(lines_.size());
    ForEachValue([&](std::size_t i) {
      const std::string_view path = KeyOf(lines_[i]);
      goes[i] = path.size() > key.size() && path[key.size()] == '\\' &&
                EqualNoCase(path.substr(0, key.size()), key);
    });
    std::size_t i = 0;
    std::erase_if(lines_, [&](std::string_view) { return goes[i++]; });
    return Text();
  }

 private:
  std::string Text() const {
    std::string text;
    for (const auto line : lines_) text.append(line).append(1, '\n');
    return text;
  }

  SettingsRoot root_;
  std::vector<std::string_view> lines_;
  /** Behind the last line of the root; 0 while there is none. */
  std::size_t end_ = 0;
};

std::string TextOf(const SettingData& data) {
  if (const auto* text = std::get_if<std::string>(&data)) return *text;
  return std::to_string(std::get<std::int32_t>(data));
}

/** The file of a store. */
struct StoreFile {
  FileSystem Files;
  std::string Path;

  std::string Read() const {
    return Files.IsGone(Path) ? std::string() : Files.ReadFile(Path, kMostBytes);
  }

  template <class Change>
  void Edit(const Change& change) const {
    Files.CreateFolders(GetParentFolderName(Path));
    const auto held = Files.Hold(Path + ".lock", kMostWait);
    const std::string before = Read(), after = change(before);
    if (after != before) Files.ReplaceFile(Path, after);
  }
};

}  // namespace

std::optional<std::string> StoredSetting(std::string_view bytes, SettingsRoot root,
                                         std::string_view key, std::string_view name) {
  StoreLines lines(bytes, root);
  const auto found = lines.Find(SpelledPath(key, name));
  if (!found) return {};
  return UnescapedValue(lines.ValueAt(*found));
}

std::string WithSetting(std::string_view bytes, SettingsRoot root, std::string_view key,
                        std::string_view name, std::string_view text) {
  return StoreLines(bytes, root).With(SpelledPath(key, name), EscapedValue(text));
}

std::string WithoutSettings(std::string_view bytes, SettingsRoot root, std::string_view key) {
  return StoreLines(bytes, root).Without(EscapedKey(key));
}

SettingsBackend IniSettings(FileSystem files, const std::string& file) {
  const StoreFile store{std::move(files), file};
  SettingsBackend backend;
  backend.Read = [store](SettingsRoot root, const std::string& key,
                         const std::string& name) -> std::optional<SettingData> {
    auto text = StoredSetting(store.Read(), root, key, name);
    if (!text) return {};
    return *std::move(text);
  };
  backend.Write = [store](SettingsRoot root, const std::string& key, const std::string& name,
                          const SettingData& data) {
    store.Edit([&](const std::string& bytes) {
      return WithSetting(bytes, root, key, name, TextOf(data));
    });
  };
  backend.Delete = [store](SettingsRoot root, const std::string& key) {
    store.Edit([&](const std::string& bytes) { return WithoutSettings(bytes, root, key); });
  };
  return backend;
}

}  // namespace rws
