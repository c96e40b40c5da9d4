#pragma once

#include <string>

class Browser;

/// Searches on the web, opened in the user's browser. Each turns the blanks of `text` into "%20",
/// in the caller's variable; nothing else is escaped. They abandon the step when no browser can be
/// started.
namespace webSearch {

/// Pages on the web.
void SearchGoogle(std::string& text, Browser& browser);
/// The meaning of a word.
void SearchDictionary(std::string& text, Browser& browser);
/// Words of the same meaning.
void SearchThesaurus(std::string& text, Browser& browser);
/// What an abbreviation is short for.
void SearchAcronym(std::string& text, Browser& browser);

}  // namespace webSearch
