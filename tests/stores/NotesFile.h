#pragma once

#include "stores/NotesStore.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

/// A place for a file of notes, and what is reported about it.
class NotesFile : public testing::Test {
protected:
    TemporaryFolder temporary;
    std::filesystem::path path = temporary.path() / "notes.cwv";
    std::vector<std::string> reported;

    [[nodiscard]] NotesStore store() {
        return {path, [this](std::string_view text) { reported.emplace_back(text); }};
    }
    /// The notes that a program sees when it starts.
    [[nodiscard]] std::vector<std::string> loaded() {
        NotesStore notes = store();
        notes.load();
        return notes.list();
    }
    void save(const std::vector<std::string>& list) {
        NotesStore notes = store();
        for (const std::string& note : list)
            notes.add(note);
        notes.savenotes();
    }
    void write(std::string_view bytes) const { std::ofstream(path, std::ios::binary) << bytes; }
    [[nodiscard]] std::string read() const { return readFile(path); }
};
