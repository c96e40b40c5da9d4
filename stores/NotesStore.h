#pragma once

#include "base/Event.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The user's notes: an ordered list of texts, written to one file, whole, at each change.
///
/// Each note is a line of the file, ended by CR LF; a line break within a note is a run of 55
/// blanks. One empty line follows the last note. The bytes of a note are the bytes of the file.
///
/// So some notes come back otherwise than they were: 55 blanks in a row as a line break, blanks
/// right before a line break behind it, a note with a lone CR as two, a note of blanks alone not at
/// all.
class NotesStore {
public:
    /// A note was added at the end: a window that shows the notes follows.
    Event<> added;

    /// `onTrouble` takes one text for the user of a save that failed and what becomes of the notes.
    NotesStore(std::filesystem::path path, Event<std::string_view> onTrouble);

    /// Reads the file into the list. Without a file, or with one that cannot be read, it is empty.
    /// Notes of blanks alone are dropped. What a save that was killed has left is removed.
    void load();
    /// Replaces the file: whoever looks, and whatever happens meanwhile, the old content or the new
    /// one is there, never a part. The folder is made when there is none. When it cannot be written
    /// the user is told and the list stays; the same while the file is there that `load` could not
    /// read, since its notes would be lost.
    void savenotes();

    /// All notes, in their order.
    [[nodiscard]] const std::vector<std::string>& list() const { return notes; }
    /// Adds a note as the last one. Does not save.
    void add(std::string_view text);
    /// Takes the note at `index` out. Does not save. Nothing happens behind the end.
    void remove(std::size_t index);

private:
    void reportUnsaved(const std::string& reason, const std::string& remedy) const;

    std::filesystem::path path;
    Event<std::string_view> onTrouble;
    std::vector<std::string> notes;
    bool unread = false;
};
