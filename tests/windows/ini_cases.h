#pragma once

// Cases for the two readers and writers of initialisation files: the system's own and ours. A case is a line
// of a UTF-8 file, its fields apart by tabs:
//
//     R  FILE SECTION KEY          the value as text
//     I  FILE SECTION KEY          the value as a number, 7 where there is none
//     W  FILE SECTION KEY VALUE    the file after writing
//     D  FILE SECTION KEY          the file after removing the key
//     S  FILE SECTION              the file after removing the section
//
// A small letter behind the first says in what the two are known to differ. FILE is the text before; with u:
// in front it is UTF-16LE with its mark, all else is code page 932. \r \n \t \v \0 are as in C, \s is a
// blank, \x83 a byte of the file, \{a*254} a letter so many times.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace ini_cases {

/// A field's pieces: text in UTF-8, and single bytes that are no text.
struct Piece {
    std::string text;
    bool raw = false;
};

inline std::vector<Piece> pieces(const std::string &field) {
    std::vector<Piece> made(1);
    const auto text = [&made](const std::string &more) {
        if (made.back().raw)
            made.emplace_back();
        made.back().text += more;
    };
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\' || i + 1 == field.size()) {
            text({field[i]});
            continue;
        }
        const std::string names = "rntv0s\\";
        const std::string meant("\r\n\t\v\0 \\", 7);
        const char escape = field[++i];
        if (const size_t known = names.find(escape); known != std::string::npos) {
            text({meant[known]});
        } else if (escape == 'x') {
            made.push_back({{char(std::stoi(field.substr(i + 1, 2), nullptr, 16))}, true});
            i += 2;
        } else { // {a*254}
            const size_t end = field.find('}', i);
            text(std::string(size_t(std::stoi(field.substr(i + 3, end - i - 3))), field[i + 1]));
            i = end;
        }
    }
    return made;
}

/// Bytes as a line: what is printable stays.
inline std::string shown(const std::string &bytes) {
    std::string text;
    for (const char c : bytes) {
        char escaped[5] = {c, 0};
        if (c < ' ' || c > '~' || c == '\\')
            std::snprintf(escaped, sizeof escaped, "\\x%02X", unsigned(static_cast<unsigned char>(c)));
        text += escaped;
    }
    return text;
}

struct Case {
    char what = 0;
    std::string difference;          ///< a letter where one is known
    std::vector<std::string> fields; ///< five, missing ones empty
};

inline std::vector<Case> read(const char *path) {
    std::vector<Case> cases;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        line.erase(std::find(line.begin(), line.end(), '\r'), line.end());
        if (line.empty() || line.front() == '#')
            continue;
        Case read{line.front(), line.substr(1, line.find('\t') - 1), {}};
        for (size_t at = line.find('\t'); at != std::string::npos;) {
            const size_t next = line.find('\t', at + 1);
            read.fields.push_back(line.substr(at + 1, next == std::string::npos ? next : next - at - 1));
            at = next;
        }
        read.fields.resize(5);
        cases.push_back(std::move(read));
    }
    return cases;
}

} // namespace ini_cases
