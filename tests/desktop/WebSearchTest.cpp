#include "base/Failure.h"
#include "desktop/mdlFunctions.h"
#include "tests/support/FakeFacilities.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using testing::Values;

struct Site {
    const char* name;
    void (*search)(std::string& text, Browser& browser);
    const char* path;

    friend void PrintTo(const Site& site, std::ostream* out) { *out << site.name; }
};

class WebSearch : public testing::TestWithParam<Site> {
protected:
    FakeFacilities::Pages browser;

    /// What the site was asked for: all that stands behind its path.
    std::string query(std::string text) {
        GetParam().search(text, browser);
        const std::string& address = browser.opened.back();
        const std::size_t path = address.find('/', std::string("http://").size());
        EXPECT_EQ(address.rfind("http://", 0), 0U) << address;
        EXPECT_EQ(address.compare(path, std::string(GetParam().path).size(), GetParam().path), 0)
            << address;
        return address.substr(path + std::string(GetParam().path).size());
    }
};

TEST_P(WebSearch, OpensTheSiteWithEveryBlankEncoded) {
    EXPECT_EQ(query("a b"), "a%20b");
    EXPECT_EQ(query("a  b"), "a%20%20b");
    EXPECT_EQ(query(" a "), "%20a%20");
    EXPECT_EQ(browser.opened.size(), 3U);
}

TEST_P(WebSearch, LeavesEverythingElseAsTyped) {
    const std::string text = "50%&b=c#d\"e'f\\g$(h)`i`;j\r\nk\tl\xC3\xBC";
    EXPECT_EQ(query(text), text);
    EXPECT_EQ(query("%20"), "%20");
}

TEST_P(WebSearch, OpensAnEmptySearchForNoText) { EXPECT_EQ(query(""), ""); }

TEST_P(WebSearch, LeavesTheEncodedTextToItsCaller) {
    std::string text = "a b c";
    GetParam().search(text, browser);
    EXPECT_EQ(text, "a%20b%20c");
}

TEST_P(WebSearch, FailsWhereNothingOpensAddresses) {
    browser.missing = true;
    std::string text = "a b";
    EXPECT_THROW(GetParam().search(text, browser), Failure);
    EXPECT_EQ(text, "a%20b");
}

INSTANTIATE_TEST_SUITE_P(Sites, WebSearch,
                         Values(Site{"Google", mdlFunctions::SearchGoogle, "/search?q="},
                                Site{"dictionary", mdlFunctions::SearchDictionary, "/search?q="},
                                Site{"thesaurus", mdlFunctions::SearchThesaurus, "/search?q="},
                                Site{"acronym", mdlFunctions::SearchAcronym,
                                     "/af-query.asp?String=exact&Acronym="}));

TEST(WebSearchSites, AreFourDifferentOnes) {
    FakeFacilities::Pages browser;
    std::string text = "x";
    mdlFunctions::SearchGoogle(text, browser);
    mdlFunctions::SearchDictionary(text, browser);
    mdlFunctions::SearchThesaurus(text, browser);
    mdlFunctions::SearchAcronym(text, browser);
    for (std::size_t one = 0; one < browser.opened.size(); ++one) {
        for (std::size_t other = 0; other < one; ++other)
            EXPECT_NE(browser.opened[one], browser.opened[other]);
    }
    EXPECT_EQ(browser.opened.size(), 4U);
}

}  // namespace
