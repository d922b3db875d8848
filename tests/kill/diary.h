#pragma once

#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace rws::test {

/** The mark of a mission that the kill test has put into its text, "none" without one. It tells
    one mission from another whatever its name. */
std::string MarkIn(const std::string& bytes);

/** What a program that will be killed writes down before and after all that it does. Each entry is
    with the system when the call returns, so that it outlives the program. */
class Diary {
 public:
  explicit Diary(const std::string& path) : file_(path, std::ios::binary | std::ios::app) {}

  /** The file of a mission stands so, and nothing is being done. */
  void Rests(const std::string& mark, const std::string& sum) { Add("rests", mark, sum); }
  /** A mission is about to be written. */
  void Writes(const std::string& mark, const std::string& sum) { Add("writes", mark, sum); }
  /** Unsaved edits, by the text that saving would write, are about to be kept; then they are. */
  void Keeps(const std::string& mark, const std::string& sum) { Add("keeps", mark, sum); }
  void Kept(const std::string& mark, const std::string& sum) { Add("kept", mark, sum); }
  /** The mission has no unsaved edits. */
  void Clean(const std::string& mark) { Add("clean", mark, "*"); }
  /** Something begins that may save edits, or that may end them unsaved. */
  void MaySave() { Add("may-save", "*", "*"); }
  void MayDrop() { Add("may-drop", "*", "*"); }

 private:
  void Add(const char* what, const std::string& mark, const std::string& sum) {
    (file_ << what << ' ' << mark << ' ' << sum << '\n').flush();
  }

  std::ofstream file_;
};

/** What is known of the missions when the program has been killed. */
class DiaryReader {
 public:
  explicit DiaryReader(const std::string& path);

  const std::set<std::string>& Marks() const { return marks_; }
  /** True if a mission may stand so now. */
  bool MayStand(const std::string& mark, const std::string& sum) const;
  /** True if unsaved edits of the mission must be offered at the next start, in one of these texts;
      or, where it may just have been saved, stand in its file. */
  bool AreKept(const std::string& mark, const std::set<std::string>& offered,
               const std::string& stands) const;
  /** Missions whose unsaved edits had been kept at the end. */
  int Promises() const;

 private:
  struct Promise {
    std::set<std::string> Texts;
    bool MaySave = false;
    /** What has been written since. */
    std::set<std::string> Written;
  };
  std::set<std::string> marks_;
  std::map<std::string, std::set<std::string>> stand_;
  std::map<std::string, Promise> promises_;
};

}  // namespace rws::test
