#include <windows.h>

#include <cstdio>

#include "tests/support/run_cli.h"
#include "tests/support/sandbox.h"

namespace rws::test {

const bool kPosixFiles = false;

void SetVariable(const std::string& name, const std::string& value) {
  ::SetEnvironmentVariableW(ToFsPath(name).c_str(), ToFsPath(value).c_str());
}

namespace {

HANDLE OpenInherited(const std::string& path) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return ::CreateFileW(ToFsPath(path).c_str(), GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/* Under Wine, on a machine with much to do, a program now and then does not start. That is not what
   is tested here: it is started again, and each failure is told. */
bool StartProgram(const std::wstring& command, const std::string& folder, STARTUPINFOW start,
                  PROCESS_INFORMATION& process) {
  constexpr int kTries = 5;
  for (int i = 0; i < kTries; ++i) {
    std::wstring line = command;  // the call may write into it
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                         ToFsPath(folder).c_str(), &start, &process)) {
      return true;
    }
    std::fprintf(stderr, "a program did not start: error %lu\n", ::GetLastError());
    ::Sleep(100);
  }
  return false;
}

}  // namespace

int RunCli(const std::string& folder, const std::string& arguments, const std::string& program) {
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = OpenInherited(folder + "\\out.txt");
  start.hStdError = OpenInherited(folder + "\\err.txt");
  const std::wstring command = ToFsPath("\"" + program + "\" " + arguments).wstring();
  PROCESS_INFORMATION process{};
  DWORD code = static_cast<DWORD>(-1);
  if (StartProgram(command, folder, start, process)) {
    ::WaitForSingleObject(process.hProcess, INFINITE);
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
  }
  ::CloseHandle(start.hStdOutput);
  ::CloseHandle(start.hStdError);
  return static_cast<int>(code);
}

}  // namespace rws::test
