#include "platform/windows/startProgram.h"

#include "base/Failure.h"
#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <shellapi.h>

void startProgram(const std::wstring& what) {
    SHELLEXECUTEINFOW start{};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_ASYNCOK | SEE_MASK_FLAG_NO_UI;
    start.lpFile = what.c_str();
    start.nShow = SW_SHOWNORMAL;
    if (ShellExecuteExW(&start) == 0) throw Failure(wideText::describe(GetLastError()));
}
