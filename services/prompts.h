#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace rws {

/** The program's title: captions, message boxes, association keys. */
inline constexpr const char kProgramTitle[] = "RWS Edit";

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Icon { None, Information, Question, Exclamation, Critical };
enum class Answer { Ok, Cancel, Yes, No };

/** What a file dialog is asked for. `Filter` is pairs of a name and a pattern, all joined by "|".
 */
struct FileQuestion {
  std::string Title, Filter, InitialFolder, DefaultName;
  /** To save: asks before a name is taken that stands there already. */
  bool AsksToReplace = true;
};

/** Every question to the user, also from code without a user interface. All texts are UTF-8, paths
    in the system's own spelling. Empty results mean that the user cancelled. */
struct Prompts {
  std::function<Answer(const std::string& text, Buttons, Icon, const std::string& title)> MsgBox;
  std::function<std::optional<std::string>(const std::string& prompt, const std::string& title,
                                           const std::string& initial)>
      InputBox;
  std::function<std::vector<std::string>(const FileQuestion&, bool several)> OpenFiles;
  std::function<std::string(const FileQuestion&)> SaveFile;
  std::function<std::string(const std::string& title, bool allowNewFolder,
                            const std::string& initialFolder)>
      Folder;
  /** Blue-green-red numbers. */
  std::function<std::optional<std::int32_t>(std::int32_t initial)> Color;
  /** A short text in the status bar that goes away by itself. */
  std::function<void(const std::string& text)> Notice;
};

}  // namespace rws
