// The cases of ini_cases.h by Windows' own interface: ini_native CASES FOLDER. Wants code page 932 as the
// system's.

#include "tests/windows/ini_cases.h"

#include <windows.h>

namespace {

std::wstring wide(const std::string &utf8) {
    std::wstring text(utf8.size(), L'\0');
    text.resize(size_t(
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), int(utf8.size()), text.data(), int(text.size()))));
    return text;
}

std::string encoded(const std::string &field, bool utf16) {
    std::string bytes;
    for (const ini_cases::Piece &piece : ini_cases::pieces(field)) {
        const std::wstring text = wide(piece.text);
        if (piece.raw) {
            bytes += piece.text;
        } else if (utf16) {
            bytes.append(reinterpret_cast<const char *>(text.data()), text.size() * sizeof(wchar_t));
        } else {
            std::string part(text.size() * 2, '\0');
            part.resize(size_t(WideCharToMultiByte(932, 0, text.data(), int(text.size()), part.data(),
                                                   int(part.size()), nullptr, nullptr)));
            bytes += part;
        }
    }
    return bytes;
}

void put(const std::string &path, const std::string &field) {
    const bool utf16 = field.rfind("u:", 0) == 0;
    std::ofstream(path, std::ios::binary)
        << (utf16 ? "\xFF\xFE" + encoded(field.substr(2), true) : encoded(field, false));
}

std::string bytesOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string answer(const ini_cases::Case &c, const std::string &path) {
    put(path, c.fields[0]);
    const std::string section = encoded(c.fields[1], false);
    const std::string key = encoded(c.fields[2], false);
    const std::string value = encoded(c.fields[3], false);
    char buffer[256] = {};
    switch (c.what) {
    case 'R':
        GetPrivateProfileStringA(section.c_str(), key.c_str(), "(default)", buffer, sizeof buffer,
                                 path.c_str());
        return buffer;
    case 'I':
        return std::to_string(int(GetPrivateProfileIntA(section.c_str(), key.c_str(), 7, path.c_str())));
    default:
        break;
    }
    const BOOL done = WritePrivateProfileStringA(section.c_str(), c.what == 'S' ? nullptr : key.c_str(),
                                                 c.what == 'W' ? value.c_str() : nullptr, path.c_str());
    return done ? bytesOf(path) : "refused";
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3 || GetACP() != 932)
        return EXIT_FAILURE;
    int number = 0;
    for (const ini_cases::Case &c : ini_cases::read(argv[1])) {
        const std::string path = std::string(argv[2]) + "\\" + std::to_string(++number) + ".ini";
        std::printf("%d\t%s\t%s\n", number, c.difference.c_str(), ini_cases::shown(answer(c, path)).c_str());
        DeleteFileA(path.c_str());
    }
    return EXIT_SUCCESS;
}
