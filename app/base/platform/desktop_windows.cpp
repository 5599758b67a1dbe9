#include "app/base/platform/desktop.h"

#include "app/base/platform/native.h"

#include <array>
#include <cstdio>
#include <shlwapi.h>

using namespace Qt::Literals::StringLiterals;

namespace platform {

QString computerName() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD length = name.size();
    GetComputerNameW(name.data(), &length);
    return QString::fromWCharArray(name.data());
}

bool hasDisplay() {
    return true;
}

void useCallersConsole() {
    // What the caller gave, a file or a pipe, stays.
    if (GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_UNKNOWN &&
        AttachConsole(ATTACH_PARENT_PROCESS))
        std::freopen("CONOUT$", "w", stdout); // NOLINT: it stays open as long as the program
}

bool opensPdf() {
    DWORD length = 0;
    // Asked for the length alone, it says so by this.
    return AssocQueryStringW(ASSOCF_INIT_IGNOREUNKNOWN, ASSOCSTR_EXECUTABLE, L".pdf", nullptr, nullptr,
                             &length) == S_FALSE;
}

QString folderProgram() {
    return u"explorer.exe"_s;
}

} // namespace platform
