#include <windows.h>

#include "host/program.h"

namespace host::test {
namespace {

constexpr int notStarted = 127;

// A word as CommandLineToArgvW reads it back: backslashes stand for themselves unless a quotation mark follows them.
std::wstring quoted(const std::wstring& word) {
  std::wstring out = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'"') out.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    out += c;
  }
  return out.append(backslashes, L'\\') + L"\"";
}

// A file that a new process inherits.
class Handle {
public:
  Handle(const std::string& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle_ = CreateFileW(pathOf(file).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                          FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  ~Handle() { CloseHandle(handle_); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE get() const { return handle_; }

private:
  HANDLE handle_;
};

}  // namespace

Answer runProgram(const std::vector<std::string>& words, const std::string& input) {
  const TemporaryFolder folder;
  std::wstring line;
  for (const std::string& word : words) line += (line.empty() ? L"" : L" ") + quoted(pathOf(word).native());
  DWORD code = notStarted;
  std::string failure;
  {
    const Handle in(folder.write("in", input), GENERIC_READ, OPEN_EXISTING),
        out(folder.file("out"), GENERIC_WRITE, CREATE_ALWAYS), err(folder.file("err"), GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = in.get(), start.hStdOutput = out.get(), start.hStdError = err.get();
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) == 0) {
      failure = words[0] + ": error " + std::to_string(GetLastError()) + "\n";
    } else {
      WaitForSingleObject(process.hProcess, INFINITE);
      GetExitCodeProcess(process.hProcess, &code);
      CloseHandle(process.hThread);
      CloseHandle(process.hProcess);
    }
  }
  return {static_cast<int>(code), contentOf(folder.file("out")), contentOf(folder.file("err")) + failure};
}

}  // namespace host::test
