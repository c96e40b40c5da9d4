#pragma once

#include "movies/format/Reader.h"
#include "movies/format/codes.h"
#include "movies/player/Inflater.h"
#include "movies/player/Movie.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace swf {

/// Reads a movie file in steps that are short whatever is in the file. Where the file is damaged,
/// what came before the fault is the movie; a file that is none gives a movie without frames.
class MovieLoader {
public:
    /// `file` is the whole content of the file.
    explicit MovieLoader(std::string file);

    /// Goes on a little. False where nothing is left to do: the movie is complete.
    [[nodiscard]] bool step();
    /// The movie, which is then the caller's; only once it is complete.
    [[nodiscard]] std::shared_ptr<const Movie> take() { return std::move(movie); }

private:
    enum class Stage { Unpacking, Reading, Done };

    void begin();
    void unpackStep();
    void readHeader();
    void readStep();
    /// Returns what the tag took, in about the time of bytes.
    std::size_t readTag();
    void readDefinition(Tag code, Reader tag);
    [[nodiscard]] bool readControl(Tag code, Reader tag);
    /// The character as it stands in the movie; nothing when it was not taken.
    Character* add(std::uint16_t number, Character character);
    [[nodiscard]] bool hasRoom();
    void addControl(const Control& control);
    void addLabel(std::string_view label);
    void endFrame();
    void endSprite();
    [[nodiscard]] Timeline& timeline() { return spriteTags ? *sprite : movie->timeline; }

    std::string file;
    std::shared_ptr<Movie> movie = std::make_shared<Movie>();
    std::optional<Inflater> inflater;
    Stage stage = Stage::Unpacking;
    Reader tags{{}};
    /// The tags of the sprite that is being read, and where they go.
    std::optional<Reader> spriteTags;
    Timeline* sprite = nullptr;
    std::optional<Timeline> unused;
    std::string_view jpegTables;
    std::size_t weight = 0;
    std::size_t controls = 0;
    std::size_t tagsRead = 0;
};

/// Reads a whole movie file at once.
[[nodiscard]] std::shared_ptr<const Movie> readMovie(std::string file);

}  // namespace swf
