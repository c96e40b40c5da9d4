#pragma once

#include <string>

class Browser;

/// Searches on the web, opened in the user's browser. Each turns the blanks of `text` into "%20",
/// in the caller's variable; nothing else is escaped. They fail when no browser can be started.
namespace webSearch {

void SearchGoogle(std::string& text, Browser& browser);
void SearchDictionary(std::string& text, Browser& browser);
void SearchThesaurus(std::string& text, Browser& browser);
void SearchAcronym(std::string& text, Browser& browser);

}  // namespace webSearch
