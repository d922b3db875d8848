#include "fuzz/support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <type_traits>

#include "mission/fields.h"

namespace rws::fuzz {

namespace {

void Print(std::string_view name, std::string_view text) {
  std::fprintf(stderr, "-- %.*s --\n%.*s\n", static_cast<int>(name.size()), name.data(),
               static_cast<int>(text.size()), text.data());
}

Services MakeServices() {
  Services services;
  services.LogSink = [](const std::string&) {};
  services.Ask.MsgBox = [](const std::string&, Buttons, Icon, const std::string&) {
    return Answer::Ok;
  };
  services.System.Now = [] { return DateTime{2026, 3, 4, 5, 6, 7}; };
  services.Page = CodePage(1252);
  return services;
}

template <class Value>
void Append(std::string& text, const Value& value) {
  if constexpr (kIsText<Value>) {
    text.append(value).append(1, '\n');
  } else if constexpr (std::is_same_v<Value, LineArray>) {
    text.append(value.FileText()).append(1, '\n');
  } else if constexpr (std::is_arithmetic_v<Value>) {
    text.append(std::to_string(value)).append(1, '\n');
  } else if constexpr (requires { FieldsOf<Value>::kTable; }) {
    ForEachField<Value>([&](const auto& field) {
      if (field.What == Holds::State) return;
      text.append(field.Name).append(1, ' ');
      Append(text, value.*field.Pointer);
    });
  } else {
    for (const auto& element : value) Append(text, element);
  }
}

}  // namespace

const Services& QuietServices() {
  static const Services services = MakeServices();
  return services;
}

void Require(bool holds, std::string_view promise) {
  if (holds) return;
  Print("broken promise", promise);
  std::abort();
}

void RequireSame(std::string_view is, std::string_view should, std::string_view promise) {
  if (is == should) return;
  Print("is", is);
  Print("should be", should);
  Require(false, promise);
}

void RequireHolds(std::string_view text, std::string_view part, std::string_view promise) {
  if (text.find(part) != text.npos) return;
  Print("text", text);
  Print("lacks", part);
  Require(false, promise);
}

std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

const std::string& WriteScratch(const std::string& name, std::string_view bytes) {
  static const std::string folder = [] {
    const auto number = std::to_string(std::random_device()());
    const auto path = std::filesystem::temp_directory_path() / ("rws-fuzz-" + number);
    Require(std::filesystem::create_directory(path), "A folder for files can be made.");
    return path.string();
  }();
  const auto path = std::filesystem::path(folder) / name;
  std::ofstream file(path, std::ios::binary);
  if (!file.is_open()) {
    std::filesystem::create_directories(path.parent_path());
    file.open(path, std::ios::binary);
  }
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  Require(file.good(), "A file can be written.");
  return folder;
}

Document OneMission() {
  Document doc;
  Mission& mission = doc.Missions.emplace_back();
  mission.FileName = "test.mis";
  mission.BaseName = "test";
  mission.DirPath = "/";
  return doc;
}

std::string ContentOf(const Mission& mission) {
  std::string text;
  Append(text, mission);
  return text;
}

}  // namespace rws::fuzz
