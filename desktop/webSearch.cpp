#include "desktop/webSearch.h"

#include "base/text.h"
#include "platform/Browser.h"

#include <string_view>

namespace {

void search(std::string_view address, std::string& text, Browser& browser) {
    text = replaceAll(text, " ", "%20");
    browser.open(std::string(address) + text);
}

}  // namespace

void webSearch::SearchGoogle(std::string& text, Browser& browser) {
    search("http://www.google.com/search?q=", text, browser);
}

void webSearch::SearchDictionary(std::string& text, Browser& browser) {
    search("http://www.dictionary.com/search?q=", text, browser);
}

void webSearch::SearchThesaurus(std::string& text, Browser& browser) {
    search("http://www.thesaurus.com/search?q=", text, browser);
}

void webSearch::SearchAcronym(std::string& text, Browser& browser) {
    search("http://www.acronymfinder.com/af-query.asp?String=exact&Acronym=", text, browser);
}
