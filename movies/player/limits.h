#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

/// What a movie file may ask for at most. Anybody may have made the file, so every count that it
/// names has its bound here; our own movies stay far below all of them.
namespace swf::limits {

/// A larger file is not read.
constexpr std::size_t fileBytes = std::size_t{8} << 20;
/// What a packed file unpacks to; what comes behind that is not read.
constexpr std::size_t unpackedBytes = std::size_t{64} << 20;
/// What one step of unpacking or reading takes on, in bytes; about a millisecond.
constexpr std::size_t bytesPerStep = std::size_t{256} << 10;
/// The time after which one step of reading goes on no further than the end of a tag.
constexpr std::chrono::milliseconds timePerStep{1};

/// What reading a tag takes besides its bytes.
constexpr std::size_t bytesPerTag = 256;
/// Tags of the whole file, known or not.
constexpr std::size_t tags = std::size_t{1} << 18;
constexpr std::size_t characters = 16384;
/// The frames of the whole movie, their labels, and all that they place, remove and do.
constexpr std::size_t controls = 131072;
/// What one shape, both ends of a morphing one, or all glyphs of one font may have.
constexpr std::size_t edgesPerShape = 65536;
constexpr std::size_t stylesPerShape = 4096;
constexpr std::size_t glyphsPerFont = 16384;
/// The edges of the whole movie; all else that characters hold counts as so many as it is large.
constexpr std::size_t edges = std::size_t{1} << 19;
constexpr std::size_t glyphsPerText = 4096;
constexpr std::size_t recordsPerButton = 256;
/// The pixels that a picture is shown with, about 800 by 640. A larger one is scaled down while it
/// is unpacked.
constexpr std::size_t pixelsPerPicture = std::size_t{512} << 10;
/// The pixels that a picture may have in the file, and the bytes that a JPEG may have. Larger ones
/// are not drawn.
constexpr std::size_t packedPixels = std::size_t{8} << 20;
constexpr std::size_t bytesPerPicture = fileBytes;
/// Pictures of so many pixels and bytes are unpacked at once, within 2 ms; others by a thread.
constexpr std::size_t pixelsAtOnce = std::size_t{32} << 10;
/// The pixels of all pictures that a movie shows.
constexpr std::size_t pixels = std::size_t{8} << 20;

/// Sprites and buttons within each other.
constexpr unsigned depth = 16;
/// Things that stand on the stage at a time, in all sprites.
constexpr std::size_t instances = 16384;
/// Controls and actions carried out for one frame, click or key.
constexpr unsigned work = 50000;
/// Frames in a row that may use all of that up; then the movie is stopped for good.
constexpr unsigned exhaustedFrames = 4;
/// Commands handed out for one frame, click or key.
constexpr std::size_t commands = 64;
constexpr std::size_t commandBytes = 4096;

/// A movie that asks for more is played at this rate.
constexpr double framesPerSecond = 60;

}  // namespace swf::limits
