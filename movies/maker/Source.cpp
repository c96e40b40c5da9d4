#include "movies/maker/Source.h"

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace {

std::string withVersion(std::string text, std::string_view version) {
    constexpr std::string_view mark = "{version}";
    const std::size_t at = text.find(mark);
    if (at != std::string::npos) text.replace(at, mark.size(), version);
    return text;
}

void split(const std::string& line, std::string_view version, Statement& statement) {
    std::size_t at = 0;
    while ((at = line.find_first_not_of(" \t\r", at)) != std::string::npos) {
        if (line.compare(at, 2, "--") == 0) return;
        const bool quoted = line[at] == '"';
        const std::size_t first = quoted ? at + 1 : at;
        std::size_t end = line.find_first_of(quoted ? "\"" : " \t\r", first);
        if (quoted && end == std::string::npos) statement.complain("a text without its end");
        end = std::min(end, line.size());
        statement.words.push_back(withVersion(line.substr(first, end - first), version));
        at = quoted ? end + 1 : end;
    }
}

}  // namespace

bool Statement::take(std::string_view wanted) {
    if (!hasMore() || words[at] != wanted) return false;
    ++at;
    return true;
}

const std::string& Statement::word(std::string_view what) {
    if (!hasMore()) complain("missing: " + std::string(what));
    return words[at++];
}

double Statement::number(std::string_view what) {
    const std::string& text = word(what);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        complain("\"" + text + "\" is no number, where one is needed: " + std::string(what));
    }
    return value;
}

int Statement::whole(std::string_view what) {
    const double value = number(what);
    const int count = static_cast<int>(value);
    if (count != value) complain("no whole number, where one is needed: " + std::string(what));
    return count;
}

void Statement::expect(std::string_view wanted) {
    if (!take(wanted)) complain("\"" + std::string(wanted) + "\" is missing");
}

void Statement::finish() {
    if (hasMore()) complain("\"" + words[at] + "\" makes no sense here");
}

void Statement::complain(std::string_view text) const {
    std::cerr << file << ':' << line << ": " << text << std::endl;
    std::exit(EXIT_FAILURE);
}

std::vector<Statement> readSource(const std::filesystem::path& path, std::string_view version) {
    std::ifstream file(path);
    if (!file) Statement{path.string(), 0, {}, 0}.complain("cannot be read");
    std::vector<Statement> statements;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        Statement statement{path.string(), number, {}, 0};
        split(line, version, statement);
        if (!statement.words.empty()) statements.push_back(std::move(statement));
    }
    return statements;
}
