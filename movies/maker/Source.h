#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// One line of a description: its words, and where it stands.
struct Statement {
    std::string file;
    int line = 0;
    std::vector<std::string> words;
    /// The next word to be read.
    std::size_t at = 0;

    /// Whether there are words that have not been read.
    [[nodiscard]] bool hasMore() const { return at < words.size(); }
    /// True, and passed over, when the next word is `wanted`.
    [[nodiscard]] bool take(std::string_view wanted);
    /// The next word, as a text, a number or a whole number; `what` says in complaints what it is
    /// for.
    [[nodiscard]] const std::string& word(std::string_view what);
    [[nodiscard]] double number(std::string_view what);
    [[nodiscard]] int whole(std::string_view what);
    /// Complains unless the next word is `wanted`.
    void expect(std::string_view wanted);
    /// Complains about what is left over.
    void finish();
    /// Says what is wrong with the line, with its place, and ends the program.
    [[noreturn]] void complain(std::string_view text) const;
};

/// The lines of a description that say something. Words stand between blanks; one that holds blanks
/// stands in quotation marks; what follows "--" is a remark. `{version}` is replaced.
[[nodiscard]] std::vector<Statement> readSource(const std::filesystem::path& path,
                                                std::string_view version);
