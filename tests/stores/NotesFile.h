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
    /// What is reported when they cannot be written.
    [[nodiscard]] std::string unsaved(const std::string& reason) const {
        return "The notes could not be saved to " + path.string() + ": " + reason +
               ". They are kept until Cobweave ends; make room on the disk, or make the file and "
               "its folder writable, and they are saved at the next change";
    }
    /// What is reported when they would be written over others.
    [[nodiscard]] std::string unread() const {
        return "The notes could not be saved to " + path.string() +
               ": what the file holds could not be read and would be lost. They are kept until "
               "Cobweave ends; move the file to another place, and they are saved at the next "
               "change";
    }
    void write(std::string_view bytes) const { std::ofstream(path, std::ios::binary) << bytes; }
    [[nodiscard]] std::string read() const { return readFile(path); }
};
