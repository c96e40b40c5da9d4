#pragma once

#include "movies/format/Writer.h"
#include "movies/maker/Paints.h"
#include "movies/maker/Score.h"
#include "movies/maker/Source.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// A movie as its text describes it. The lines of the text:
///     use FILE                    another file's lines, such as the colours'
///     size WIDTH HEIGHT, rate FRAMES, version NUMBER, background COLOR
///     color ..., gradient ...     see Paints
///     picture NAME WIDTH [enlarged TIMES] [jpeg] COLOR... its pixels, row by row
///     pattern ...                 see Paints; of such a picture
///     shape NAME ... end          lines as readStrokes has them
///     sprite NAME [open] ... end  lines as Score has them; open: its last frame has no end
///     button NAME ... end         up, over, down or hit THING, and: on EVENT ACTION
///     and those of Score, for the movie itself.
/// The events are over, out, press, release, and key with the number of a key.
class Description {
public:
    /// Reads the text; the first line that makes no sense ends the program (`Statement::complain`).
    Description(const std::filesystem::path& path, std::string_view version);

    /// The movie as a packed file, of version 6 if none is named.
    [[nodiscard]] std::string file() const;

private:
    using Block = std::vector<Statement>;
    void read(const std::filesystem::path& path, std::string_view version);
    void readLine(Statement& statement);
    void readPicture(Statement& statement);
    void readShape(const Statement& head, const std::string& name, Block& block);
    void readSprite(const Statement& head, const std::string& name, Block& block, bool isOpen);
    void readButton(const Statement& head, const std::string& name, Block& block);

    Paints paints;
    Definitions definitions;
    Score score{definitions, paints};
    double width = 0;
    double height = 0;
    double rate = 30;
    unsigned fileVersion = 6;
    std::optional<swf::Color> background;
};
