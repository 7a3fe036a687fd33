// Texts that mean something to an interpreter of some kind: markup, formats, shells, statements, addresses.
// As names and tags they are plain texts and come out as they went in.
#pragma once

#include "app/TextHelpers.h"

#include <string>
#include <vector>

namespace quavernet::test {

inline const std::vector<std::string>& HostileTexts() {
    static const std::vector<std::string> texts{
        "<b>x</b><img src=http://127.0.0.1:9/x>",
        "<!DOCTYPE html><a href='http://127.0.0.1:9/'>x</a>",
        "%s%n%d %1 %L1",
        "'; DROP TABLE Files; --",
        "x' or 'a' = 'a",
        "); Delete from Files; --",
        "1; Delete from Files",
        "O'Neil ''twice''",
        "\"double\" [F.Name] `tick`",
        "100% _any_ *?#!",
        "?1 :name @name $name",
        "/* comment */ -- comment",
        "$(touch X) `touch X` ; touch X | touch X",
        "&amp; &File && &&amp;",
        "two\nlines",
        "two\r\nlines\tand a tab",
        "-rf",
        "--help",
        "http://127.0.0.1:9/x",
        "file:///etc/passwd",
        "\\n\\0\\'",
        "#EXTM3U",
    };
    return texts;
}

/// The text as the name of a file or folder, which "/" alone cannot be part of.
inline std::string AsFileName(const std::string& text) {
    return ReplaceAll(text, "/", "|");
}

} // namespace quavernet::test
