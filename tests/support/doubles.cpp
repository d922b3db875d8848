#include "tests/support/doubles.h"

#include <gtest/gtest.h>

#include "mission/reader.h"
#include "services/setting_values.h"
#include "services/text.h"

namespace rws::test {

PromptScript::~PromptScript() { AllAsked(); }

void PromptScript::AllAsked() {
  for (const auto& line : expected_) ADD_FAILURE() << "never asked: " << line.Text;
  expected_.clear();
}

void PromptScript::Expect(const std::string& text, Answer answer) {
  expected_.push_back({text, answer, "", true});
}

void PromptScript::ExpectPath(const std::string& title, const std::string& path) {
  expected_.push_back({title, Answer::Ok, path, false});
}

PromptScript::Line PromptScript::Next(const std::string& text, bool isBox) {
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected question: " << text;
    return {text, Answer::Cancel, "", isBox};
  }
  const Line line = expected_.front();
  expected_.pop_front();
  EXPECT_EQ(line.IsBox, isBox) << text;
  EXPECT_NE(text.find(line.Text), std::string::npos)
      << "asked: " << text << "\nexpected: " << line.Text;
  return line;
}

Prompts PromptScript::Seam() {
  Prompts prompts;
  prompts.MsgBox = [this](const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) {
    Boxes.push_back({text, buttons, icon, title});
    return Next(text, true).Answer;
  };
  prompts.InputBox = [this](const std::string& prompt, const std::string&,
                            const std::string&) -> std::optional<std::string> {
    const std::string text = Next(prompt, false).Path;
    return text.empty() ? std::nullopt : std::optional(text);
  };
  prompts.OpenFiles = [this](const FileQuestion& question, bool) {
    StartFolders.push_back(question.InitialFolder);
    const std::string path = Next(question.Title, false).Path;
    std::vector<std::string> paths;
    if (!path.empty())
      for (const auto part : SplitAt(path, '|')) paths.emplace_back(part);
    return paths;
  };
  prompts.SaveFile = [this](const FileQuestion& question) {
    StartFolders.push_back(question.InitialFolder);
    return Next(question.Title, false).Path;
  };
  prompts.Folder = [this](const std::string& title, bool, const std::string& initialFolder) {
    StartFolders.push_back(initialFolder);
    return Next(title, false).Path;
  };
  prompts.Notice = [this](const std::string& text) { Notices.push_back(text); };
  return prompts;
}

SettingsBackend MemorySettings(std::map<std::string, std::string>& values) {
  const auto id = [](SettingsRoot root, const std::string& key, const std::string& name) {
    return CodePage().LCase((root == SettingsRoot::ClassesRoot ? "classes\\" : "") + key + "\\" +
                            name);
  };
  SettingsBackend backend;
  backend.Read = [&values, id](SettingsRoot root, const std::string& key,
                               const std::string& name) -> std::optional<SettingData> {
    const auto found = values.find(id(root, key, name));
    if (found == values.end()) return {};
    return found->second;
  };
  backend.Write = [&values, id](SettingsRoot root, const std::string& key, const std::string& name,
                                const SettingData& data) {
    const auto* text = std::get_if<std::string>(&data);
    values[id(root, key, name)] = text ? *text : std::to_string(std::get<std::int32_t>(data));
  };
  backend.Delete = [&values, id](SettingsRoot root, const std::string& key) {
    const std::string prefix = id(root, key, "");
    std::erase_if(values, [&](const auto& value) { return value.first.starts_with(prefix); });
  };
  return backend;
}

World::World() {
  Services.Ask = Script.Seam();
  Services.Settings.BaseKey = kSettingsBaseKey;
  Services.Settings.Backend = MemorySettings(SettingTexts);
  // Nothing is asked about lines that an Update makes anew; tests of that choose otherwise.
  WriteSetting(Services.Settings, setting::LaterVersions, "2");
  Services.LogSink = [this](const std::string& line) { Log.push_back(line); };
  Services.System.Execute = [this](const std::string& verb, const std::string& path) {
    ShellCalls.push_back(verb + " " + path);
    return 33;
  };
  Services.System.OpenText = [this](const std::string& path) {
    ShellCalls.push_back("text " + path);
    return 33;
  };
  Services.System.StartSound = [this](const std::string& path) {
    ShellCalls.push_back("start " + path);
  };
  Services.System.SetClipboard = [this](const std::string& text) { Clipboard = text; };
  Services.System.ClipboardText = [this] { return Clipboard; };
  Services.System.StopSound = [this] { ShellCalls.push_back("stop"); };
  Services.System.Now = [this] { return Clock; };
  Services.System.HomeFolder = [] { return std::string("/"); };
  Services.Window.ShowBusy = [this](bool busy) { Busy = busy; };
  Services.Window.Close = [this] { ++CloseRequests; };
  Services.Window.IsUp = [this] { return Up; };
  Services.Window.LightUpdate = [this](bool lit) { Lit = lit; };
}

World::World(const std::string& appPath) : World() {
  Services.AppPath = appPath;
  Services.ProgramPath = appPath;
}

std::string Crlf(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const auto& line : lines) bytes += line + "\r\n";
  return bytes;
}

std::string CrlfText(std::string_view joinedByBars) {
  std::string bytes;
  if (!joinedByBars.empty())
    for (const auto line : SplitAt(joinedByBars, '|')) bytes.append(line).append("\r\n");
  return bytes;
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const auto& text : texts) joined += (&text == texts.data() ? "" : "|") + text;
  return joined;
}

void ReadInto(World& world, const std::string& bytes) {
  Mission mission;
  mission.FileName = "test.mis";
  mission.BaseName = "test";
  mission.DirPath = "/";
  world.Doc.Missions = {mission};
  world.Doc.CurMission = 0;
  ReadMissionText(world.Doc, world.Services, 0, bytes);
  world.Doc.MissionShadow = world.Doc.Missions;
}

Mission& ReadLines(World& world, std::string_view joinedByBars) {
  ReadInto(world, CrlfText(joinedByBars));
  return world.Doc.Missions[0];
}

}  // namespace rws::test
