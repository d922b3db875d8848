#include <gtest/gtest.h>

#include <functional>

#include "services/faults.h"
#include "services/file_system.h"
#include "services/paths.h"
#include "services/paths_windows.h"
#include "tests/support/sandbox.h"

// Behind the others: it gives some of their names a letter at the end by macro.
#include <windows.h>
#undef CopyFile
#undef DeleteFile
#undef MoveFile
#undef ReplaceFile

namespace rws {
namespace {

/** A file that another program has open. */
class Opened {
 public:
  Opened(const std::string& path, DWORD access, DWORD share)
      : file_(::CreateFileW(CallPath(path).c_str(), access, share, nullptr, OPEN_EXISTING, 0,
                            nullptr)) {
    EXPECT_NE(file_, INVALID_HANDLE_VALUE) << path;
  }
  ~Opened() { ::CloseHandle(file_); }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

 private:
  HANDLE file_;
};

class WindowsFiles : public testing::Test {
 protected:
  static Fault FaultOf(const std::function<void()>& body) {
    Fault result(0, "");
    Trap(body, [&](const Fault& caught) { result = caught; });
    return result;
  }
  /** Name and content of every entry. */
  std::string All(const std::string& folder) const {
    std::string all;
    for (const auto& entry : Files.ListFolder(folder))
      all += entry.Name + "=" +
             (entry.IsFolder ? "/" : Files.ReadFile(BuildPath(folder, entry.Name))) + ";";
    return all;
  }

  test::Sandbox Box;
  FileSystem Files;
};

TEST_F(WindowsFiles, PathsMayBeLong) {
  std::vector<std::string> folders{Box.Path()};
  for (const char letter : {'a', 'b', 'c', 'd'}) {
    folders.push_back(BuildPath(folders.back(), std::string(90, letter)));
    Files.CreateFolder(folders.back());
  }
  const std::string deep = folders.back(), a = BuildPath(deep, "a.mis"),
                    b = BuildPath(deep, "b.mis");
  ASSERT_GT(a.size(), 400U);
  Files.ReplaceFile(a, "A");
  Files.ReplaceFile(a, "A2");
  Files.AppendToFile(a, "+");
  Files.CopyFile(a, b);
  Files.LinkOrCopy(a, BuildPath(deep, "link.mis"));
  EXPECT_EQ(All(deep), "a.mis=A2+;b.mis=A2+;link.mis=A2+;");
  Files.MoveFile(a, BuildPath(deep, "c.mis"));
  EXPECT_TRUE(Files.FileExists(BuildPath(deep, "C.MIS")) && Files.IsGone(a));
  EXPECT_EQ(Files.Stamp(b).Size, 3U);
  EXPECT_TRUE(Files.IsSameFile(b, BuildPath(deep, "x\\..\\B.mis")));
  EXPECT_EQ(Files.Resolve(BuildPath(deep, "B.MIS")), b);
  EXPECT_EQ(Files.FollowLinks(b), b);
  EXPECT_EQ(Files.GetAbsolutePathName(deep + "/./x/../b.mis"), b);
  EXPECT_TRUE(Files.CanWriteInto(deep));
  EXPECT_EQ(FaultOf([&] { Files.Hold(BuildPath(deep, "lock"), 0); }).Number, 0);
  for (const char* name : {"b.mis", "c.mis", "link.mis"}) Files.DeleteFile(BuildPath(deep, name));
  EXPECT_EQ(All(deep), "");
  for (; folders.size() > 1; folders.pop_back())
    EXPECT_TRUE(::RemoveDirectoryW(CallPath(folders.back()).c_str())) << folders.back();
}

TEST_F(WindowsFiles, RefusesForbiddenNamesBeforeAnythingIsTouched) {
  const std::pair<const char*, const char*> rows[] = {
      {"con", "device"},        {"CON.mis", "device"},
      {"nul.a.b", "device"},    {"aux .mis", "device"},
      {"Com1", "device"},       {"lpt9.txt", "device"},
      {"conout$", "device"},    {"com\xC2\xB9", "device"},
      {"x.", "dot or a blank"}, {"x.mis ", "dot or a blank"},
      {"a:b", "character"},     {"a.mis:b", "character"},
      {"a?b", "character"},     {"a\tb", "character"},
      {"a|b", "character"}};
  const std::string a = Box.Write("a.mis", "A");
  for (const auto& [name, reason] : rows) {
    const std::string path = Box.Path() + "\\" + name;
    const std::function<void()> calls[] = {
        [&] { Files.ReplaceFile(path, "x"); }, [&] { Files.AppendToFile(path, "x"); },
        [&] { Files.CopyFile(a, path); },      [&] { Files.LinkOrCopy(a, path); },
        [&] { Files.MoveFile(a, path); },      [&] { Files.CreateFolder(path); },
        [&] { Files.Hold(path, 0); }};
    for (const auto& call : calls) {
      const std::string text = FaultOf(call).Text;
      SCOPED_TRACE(std::to_string(&call - calls) + " " + text);
      EXPECT_NE(text.find(path), text.npos);
      EXPECT_NE(text.find(reason), text.npos);
      EXPECT_EQ(All(Box.Path()), "a.mis=A;");
    }
    EXPECT_FALSE(Files.FileExists(path)) << path;
  }
  for (const char* name : {"comet", "com0", "com10", "console.mis", "nul_", ".x", "a..b", "lpt"})
    EXPECT_EQ(NameRefusal(Box.Path() + "\\" + name) + NameRefusal(std::string("C:") + name), "");
}

TEST_F(WindowsFiles, AFileThatAnotherProgramHasOpen) {
  const std::string a = Box.Write("a.mis", "old");
  {
    const Opened writer(a, GENERIC_WRITE, FILE_SHARE_READ);
    EXPECT_EQ(Files.ReadFile(a), "old");
    EXPECT_EQ(Files.Stamp(a).Size, 3U);
  }
  constexpr char kReason[] = ": it is open in another program";
  {
    // Later versions of Windows replace such a file, others and Wine do not.
    const Opened sharing(a, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE);
    const Fault caught = FaultOf([&] { Files.ReplaceFile(a, "new"); });
    EXPECT_TRUE(caught.Number == 0 || caught.Text.ends_with(kReason)) << caught.Text;
    EXPECT_EQ(All(Box.Path()), caught.Number == 0 ? "a.mis=new;" : "a.mis=old;");
  }
  Files.ReplaceFile(a, "new");
  const Opened reader(a, GENERIC_READ, FILE_SHARE_READ);
  const std::function<void()> calls[] = {[&] { Files.ReplaceFile(a, "x"); },
                                         [&] { Files.DeleteFile(a); },
                                         [&] { Files.MoveFile(a, Box.Path("b.mis")); }};
  for (const auto& call : calls) {
    const Fault caught = FaultOf(call);
    SCOPED_TRACE(caught.Text);
    EXPECT_EQ(caught.Number, fault::Permission);
    EXPECT_TRUE(caught.Text.ends_with("\"" + a + "\"" + kReason));
    EXPECT_EQ(All(Box.Path()), "a.mis=new;");
  }
}

TEST_F(WindowsFiles, ReadOnlyAndHiddenFiles) {
  const std::string a = Box.Write("a.mis", "old");
  const std::wstring name = CallPath(a);
  constexpr DWORD kSet = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
  ASSERT_TRUE(::SetFileAttributesW(name.c_str(), kSet));
  for (const auto& call : {std::function<void()>([&] { Files.ReplaceFile(a, "x"); }),
                           std::function<void()>([&] { Files.DeleteFile(a); })})
    EXPECT_TRUE(FaultOf(call).Text.ends_with("\"" + a + "\": the file is read-only"));
  EXPECT_EQ(All(Box.Path()), "a.mis=old;");
  Files.ReplaceFile(a, "new", a, IfReadOnly::AllTheSame);
  Files.CopyFile(a, Box.Path("b.mis"));
  EXPECT_EQ(All(Box.Path()), "a.mis=new;b.mis=new;");
  for (const char* copy : {"a.mis", "b.mis"}) {
    EXPECT_EQ(::GetFileAttributesW(CallPath(Box.Path(copy)).c_str()) & kSet, kSet) << copy;
    Files.DeleteFile(Box.Path(copy), IfReadOnly::AllTheSame);
  }
  EXPECT_EQ(All(Box.Path()), "");
}

TEST_F(WindowsFiles, FoldersThatCannotBeListedAreNoEmptyOnes) {
  for (const std::string& folder :
       {Box.Path("gone"), Box.Write("file", ""), std::string(), Box.Path() + "\\a?b"}) {
    const Fault caught = FaultOf([&] { Files.ListFolder(folder); });
    EXPECT_EQ(caught.Number, fault::PathNotFound) << folder << ": " << caught.Text;
  }
  Box.MakeFolder("empty");
  EXPECT_EQ(All(Box.Path("empty")), "");
}

TEST_F(WindowsFiles, NamesOfAnyLetters) {
  for (const std::string name : {"\xD0\x9C\xD0\xB8\xD1\x81.mis", "\xF0\x9F\x98\x80.mis"}) {
    const std::string path = Box.Path() + "\\" + name;
    Files.ReplaceFile(path, "1");
    EXPECT_EQ(All(Box.Path()), name + "=1;");
    EXPECT_EQ(Files.Resolve(path), path);
    Files.DeleteFile(path);
  }
  // Half a surrogate pair is no letter, but Windows takes it for a name. Wine does not.
  const std::wstring half = L"\xD800x\xDC00.mis";
  EXPECT_EQ(Wide(Narrow(half)), half);
  EXPECT_EQ(Narrow(Wide("\xF0\x9F\x98\x80")), "\xF0\x9F\x98\x80");
}

TEST_F(WindowsFiles, RenamesInLetterCaseAlone) {
  const std::string a = Box.Write("a.mis", "A"), upper = Box.Path("A.MIS");
  EXPECT_EQ(Files.Resolve(upper), a);
  EXPECT_TRUE(Files.IsSameFile(a, upper));
  Files.MoveFile(a, upper);
  if (All(Box.Path()) == "a.mis=A;" &&
      ::GetProcAddress(::GetModuleHandleW(L"ntdll"), "wine_get_version"))
    GTEST_SKIP() << "Wine takes this rename and leaves the name as it is";
  EXPECT_EQ(All(Box.Path()), "A.MIS=A;");
}

}  // namespace
}  // namespace rws
