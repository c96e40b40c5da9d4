#include "stores/NotesStore.h"

#include "tests/stores/NotesFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

std::string blanks(std::size_t count) { return std::string(count, ' '); }

/// What is in the file and what is in the list.
struct Content {
    const char* name;
    std::string bytes;
    std::vector<std::string> notes;
};

void PrintTo(const Content& content, std::ostream* stream) { *stream << content.name; }

class SavedNotes : public NotesFile, public testing::WithParamInterface<Content> {};

TEST_P(SavedNotes, AreTheBytesOfTheFile) {
    save(GetParam().notes);
    EXPECT_EQ(read(), GetParam().bytes);
    EXPECT_THAT(reported, IsEmpty());
}

const Content saved[] = {
    {"AnEmptyListAsAnEmptyLine", "\r\n", {}},
    {"EachAsALineAndAnEmptyOneAtTheEnd",
     "buy milk\r\ncall" + blanks(55) + "home\r\n\r\n",
     {"buy milk", "call\r\nhome"}},
    {"AnEmptyOneAsAnEmptyLine", "\r\n\r\n", {""}},
    {"BlanksAlone", "   \r\n\r\n", {"   "}},
    {"ALineBreakAlone", blanks(55) + "\r\n\r\n", {"\r\n"}},
    {"TwoLineBreaksInARow", "a" + blanks(110) + "b\r\n\r\n", {"a\r\n\r\nb"}},
    {"ALineBreakAtTheEnd", "a" + blanks(55) + "\r\n\r\n", {"a\r\n"}},
    {"FiftyFiveBlanksAsTheyAre", "a" + blanks(55) + "b\r\n\r\n", {"a" + blanks(55) + "b"}},
    {"ALoneCRAsItStands", "a\rb\r\n\r\n", {"a\rb"}},
    {"ALoneCRAtTheEnd", "a\r\r\n\r\n", {"a\r"}},
    {"ALoneCRBeforeALineBreak", "a\r" + blanks(55) + "b\r\n\r\n", {"a\r\r\nb"}},
    {"ALoneLFAsItStands", "a\nb\r\n\r\n", {"a\nb"}},
    {"NULs", "a\0b\r\n\r\n"s, {"a\0b"s}},
};

INSTANTIATE_TEST_SUITE_P(Table, SavedNotes, testing::ValuesIn(saved),
                         [](const auto& info) { return info.param.name; });

class LoadedNotes : public NotesFile, public testing::WithParamInterface<Content> {};

TEST_P(LoadedNotes, AreTheLinesOfTheFile) {
    write(GetParam().bytes);
    EXPECT_EQ(loaded(), GetParam().notes);
    EXPECT_EQ(read(), GetParam().bytes);
    EXPECT_THAT(reported, IsEmpty());
}

const Content loadedCases[] = {
    {"NoneFromAnEmptyFile", "", {}},
    {"NoneFromAnEmptyLine", "\r\n", {}},
    {"EachLineButTheEmptyOneAtTheEnd",
     "buy milk\r\ncall" + blanks(55) + "home\r\n\r\n",
     {"buy milk", "call\r\nhome"}},
    {"WithoutTheEmptyLineAtTheEnd", "a\r\nb\r\n", {"a", "b"}},
    {"WithALastLineThatHasNoEnd", "a\r\nb", {"a", "b"}},
    {"WithALastLineThatEndsInCR", "a\r\nb\r", {"a", "b"}},
    {"CutByALoneCR", "a\rb\r\n\r\n", {"a", "b"}},
    {"CutByTwoCRsInARow", "a\r\rb\r\r\nc", {"a", "b", "c"}},
    {"NotCutByALoneLF", "a\nb\n\r\n\nc\r\n\r\n", {"a\nb\n", "\nc"}},
    {"WithALFAfterALineBreak", "a\r\n\nb\r\n", {"a", "\nb"}},
    {"ALFAlone", "\n", {"\n"}},
    {"WithoutEmptyLinesBetween", "\r\n\r\na\r\n\r\nb\r\n\r\n", {"a", "b"}},
    {"WithoutLinesOfFewerThanFiftyFiveBlanks",
     " \r\n" + blanks(54) + "\r\na\r\n" + blanks(30),
     {"a"}},
    {"FiftyFourBlanksAsTheyAre", "a" + blanks(54) + "b\r\n", {"a" + blanks(54) + "b"}},
    {"FiftyFiveBlanksAsALineBreak", "a" + blanks(55) + "b\r\n", {"a\r\nb"}},
    {"FiftySixBlanksAsALineBreakAndABlank", "a" + blanks(56) + "b\r\n", {"a\r\n b"}},
    {"AHundredAndNineBlanksAsALineBreakAndTheRest",
     "a" + blanks(109) + "b\r\n",
     {"a\r\n" + blanks(54) + "b"}},
    {"AHundredAndTenBlanksAsTwoLineBreaks", "a" + blanks(110) + "b\r\n", {"a\r\n\r\nb"}},
    {"FiftyFiveBlanksAloneAsALineBreak", blanks(55) + "\r\n\r\n", {"\r\n"}},
    {"FiftySixBlanksAloneAsALineBreakAndABlank", blanks(56) + "\r\n\r\n", {"\r\n "}},
    {"BlanksAtBothEnds", "  a  \r\n\r\n", {"  a  "}},
    {"OtherSpaceThanBlanks", "\t\r\n\v\r\n\xA0\r\n\r\n", {"\t", "\v", "\xA0"}},
    {"NULs", "\0\r\na\0b\0\r\n\r\n"s, {"\0"s, "a\0b\0"s}},
    {"BytesBehindTheCodeForAnEnd", "a\x1A"s + "b\r\nc\r\n\r\n", {"a\x1A"s + "b", "c"}},
};

INSTANTIATE_TEST_SUITE_P(Table, LoadedNotes, testing::ValuesIn(loadedCases),
                         [](const auto& info) { return info.param.name; });

/// What was saved and what is loaded instead.
struct Change {
    const char* name;
    std::vector<std::string> before;
    std::vector<std::string> after;
};

void PrintTo(const Change& change, std::ostream* stream) { *stream << change.name; }

class ChangedNotes : public NotesFile, public testing::WithParamInterface<Change> {};

TEST_P(ChangedNotes, ComeBackOtherwiseThanTheyWere) {
    save(GetParam().before);
    EXPECT_EQ(loaded(), GetParam().after);
}

const Change changes[] = {
    {"FiftyFiveBlanksAsALineBreak", {"a" + blanks(55) + "b"}, {"a\r\nb"}},
    {"BlanksAloneNotAtAll", {"a", "   ", "b"}, {"a", "b"}},
    {"FiftyFiveBlanksAloneAsALineBreak", {blanks(55)}, {"\r\n"}},
    {"AnEmptyOneNotAtAll", {"a", "", "b"}, {"a", "b"}},
    {"ALoneCRAsTheEndOfANote", {"a\rb"}, {"a", "b"}},
    {"ALoneCRAtTheEndNotAtAll", {"a\r", "b"}, {"a", "b"}},
    {"BlanksBeforeALineBreakBehindIt", {"a  \r\nb"}, {"a\r\n  b"}},
};

INSTANTIATE_TEST_SUITE_P(Table, ChangedNotes, testing::ValuesIn(changes),
                         [](const auto& info) { return info.param.name; });

TEST_F(NotesFile, KeepsANoteOfALineBreakAlone) {
    save({"\r\n"});
    EXPECT_THAT(loaded(), ElementsAre("\r\n"));
}

TEST_F(NotesFile, KeepsAnyByteButTheEndOfALine) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r') bytes += static_cast<char>(byte);
    }
    bytes += "\r\n";
    save({bytes, bytes});
    EXPECT_THAT(loaded(), ElementsAre(bytes, bytes));
}

TEST_F(NotesFile, KeepsTheSameBytesWhenItIsLoadedAndSaved) {
    const std::string bytes = "b\r\na" + blanks(55) + "\r\nb\r\n\r\n";
    write(bytes);
    NotesStore notes = store();
    notes.load();
    notes.savenotes();
    EXPECT_EQ(read(), bytes);
}

/// A note that comes back as it was: no blanks before a line break, fewer than 55 in a row, no CR
/// but in line breaks, and something else than blanks.
std::string randomNote(std::mt19937& chance) {
    const auto below = [&](std::size_t limit) { return chance() % limit; };
    std::string note;
    bool blank = false;
    for (std::size_t pieces = 1 + below(12); pieces > 0; --pieces) {
        const std::size_t kind = below(4);
        if (kind == 0 && !blank) {
            note += "\r\n";
        } else if (kind == 1 && !blank) {
            note += blanks(1 + below(54));
            blank = true;
        } else {
            const char byte = static_cast<char>(below(256));
            note += byte == ' ' || byte == '\r' ? '\n' : byte;
            blank = false;
        }
    }
    return note.find_first_not_of(' ') == std::string::npos ? note + "x" : note;
}

TEST_F(NotesFile, GivesBackAnyListAsItWas) {
    std::mt19937 chance(20);
    for (int round = 0; round < 500; ++round) {
        std::vector<std::string> list(chance() % 20);
        for (std::string& note : list)
            note = randomNote(chance);
        save(list);
        ASSERT_EQ(loaded(), list) << "round " << round;
    }
}

TEST_F(NotesFile, ThatIsMissingIsAnEmptyList) {
    EXPECT_THAT(loaded(), IsEmpty());
    EXPECT_THAT(reported, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(NotesFile, TakesThePlaceOfTheListWhenItIsLoadedAgain) {
    NotesStore notes = store();
    write("a\r\nb\r\n\r\n");
    notes.load();
    notes.add("c");
    notes.load();
    EXPECT_THAT(notes.list(), ElementsAre("a", "b"));
    std::filesystem::remove(path);
    notes.load();
    EXPECT_THAT(notes.list(), IsEmpty());
}

TEST_F(NotesFile, IsWrittenByNothingButASave) {
    NotesStore notes = store();
    notes.add("a");
    EXPECT_FALSE(std::filesystem::exists(path));
    notes.savenotes();
    notes.remove(0);
    EXPECT_EQ(read(), "a\r\n\r\n");
}

TEST_F(NotesFile, ListsNotesInTheOrderTheyCame) {
    NotesStore notes = store();
    for (const char* const note : {"b", "a", "", "a"})
        notes.add(note);
    EXPECT_THAT(notes.list(), ElementsAre("b", "a", "", "a"));
}

TEST_F(NotesFile, ListsWhatIsLeftAfterARemoval) {
    NotesStore notes = store();
    for (const char* const note : {"a", "b", "c", "d"})
        notes.add(note);
    notes.remove(1);
    EXPECT_THAT(notes.list(), ElementsAre("a", "c", "d"));
    notes.remove(2);
    EXPECT_THAT(notes.list(), ElementsAre("a", "c"));
    notes.remove(0);
    EXPECT_THAT(notes.list(), ElementsAre("c"));
    notes.remove(1);
    notes.remove(static_cast<std::size_t>(-1));
    EXPECT_THAT(notes.list(), ElementsAre("c"));
    notes.remove(0);
    notes.remove(0);
    EXPECT_THAT(notes.list(), IsEmpty());
}

class HugeNotesFile : public NotesFile {
protected:
    /// Far more than reading from front to end takes, and far less than reading all for each line.
    static constexpr std::chrono::seconds longEnough{60};

    [[nodiscard]] std::vector<std::string> loadedInTime(std::string_view bytes) {
        write(bytes);
        const auto start = std::chrono::steady_clock::now();
        auto notes = loaded();
        EXPECT_LT(std::chrono::steady_clock::now() - start, longEnough);
        return notes;
    }
};

TEST_F(HugeNotesFile, CanBeOneLineOfBlanks) {
    constexpr std::size_t size = 100'000'000;
    const auto notes = loadedInTime(blanks(size));
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_EQ(notes[0].size(), size / 55 * 2 + size % 55);
    EXPECT_TRUE(notes[0].starts_with("\r\n\r\n"));
    EXPECT_EQ(notes[0].find(' '), size / 55 * 2);
}

TEST_F(HugeNotesFile, CanBeFullOfBlanksThatAreNoLineBreaks) {
    const std::string part = blanks(54) + "x";
    std::string line;
    for (std::size_t parts = 0; parts < 200'000; ++parts)
        line += part;
    const auto notes = loadedInTime(line);
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_TRUE(notes[0] == line);
}

TEST_F(HugeNotesFile, CanHaveAMillionLines) {
    constexpr std::size_t count = 1'000'000;
    std::string bytes;
    for (std::size_t line = 0; line < count; ++line)
        bytes += std::to_string(line) + "\r\n";
    const auto notes = loadedInTime(bytes);
    ASSERT_EQ(notes.size(), count);
    EXPECT_EQ(notes.front(), "0");
    EXPECT_EQ(notes.back(), "999999");
    save(notes);
    EXPECT_TRUE(read() == bytes + "\r\n");
}

TEST_F(NotesFile, RemovesWhatASaveThatWasKilledHasLeft) {
    const auto left = path.parent_path() / ".cobweave-0123456789abcdef0123456789abcdef";
    std::ofstream(left) << "part";
    store().load();
    EXPECT_FALSE(std::filesystem::exists(left));
}

}  // namespace
