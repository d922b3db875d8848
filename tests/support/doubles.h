#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "mission/writer.h"
#include "session/session.h"

namespace rws::test {

/** Answers the program's questions. A test says beforehand which text is asked and what is
   answered; an unexpected question or an answer never asked for fails the test. */
class PromptScript {
 public:
  ~PromptScript();
  /** Expects a message box whose text holds `text`. */
  void Expect(const std::string& text, Answer answer = Answer::Ok);
  /** Expects a file, save or folder dialog with this title; "" cancels. */
  void ExpectPath(const std::string& title, const std::string& path);
  /** Expects an input box with this prompt; "" cancels. */
  void ExpectInput(const std::string& prompt, const std::string& text) { ExpectPath(prompt, text); }
  /** Fails the test when an expected question has not been asked yet. */
  void AllAsked();

  Prompts Seam();
  /** Text, buttons, icon and title of every box shown, and the first folder of every dialog. */
  struct Box {
    std::string Text;
    rws::Buttons Buttons;
    rws::Icon Icon;
    std::string Title;
  };
  std::vector<Box> Boxes;
  std::vector<std::string> StartFolders, Notices;

 private:
  struct Line {
    std::string Text;
    rws::Answer Answer;
    std::string Path;
    bool IsBox;
  };
  Line Next(const std::string& text, bool isBox);
  std::deque<Line> expected_;
};

/** Settings in memory; names without regard to case. */
SettingsBackend MemorySettings(std::map<std::string, std::string>& values);

/** Services over real files, with doubles for everything else, and a window that records what
    it is asked. The clock stands at 2026-03-04 05:06:07. */
struct World : Session {
  World();
  explicit World(const std::string& appPath);

  PromptScript Script;
  std::map<std::string, std::string> SettingTexts;
  std::vector<std::string> Log;
  /** What the shell was asked, as "open PATH", "Play PATH", "text PATH", "start PATH", "stop". */
  std::vector<std::string> ShellCalls;
  std::string Clipboard;
  DateTime Clock{2026, 3, 4, 5, 6, 7};

  bool Up = true, Lit = false, Busy = false;
  int CloseRequests = 0;
  /** What the window shows. */
  ShownValues Shown;
};

/** Joins lines with carriage return and line feed, one behind each. */
std::string Crlf(const std::vector<std::string>& lines);

/** The same for lines that are joined by "|"; "" is no line. */
std::string CrlfText(std::string_view joinedByBars);

/** Texts joined by "|". */
std::string Joined(const std::vector<std::string>& texts);

/** A world with one mission, read from these bytes without touching the disk. */
void ReadInto(World& world, const std::string& bytes);

/** The same from lines that are joined by "|"; gives the mission. */
Mission& ReadLines(World& world, std::string_view joinedByBars);

}  // namespace rws::test
