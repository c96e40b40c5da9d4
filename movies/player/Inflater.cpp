#include "movies/player/Inflater.h"

#include "base/Failure.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace swf {

namespace {

template <typename Number>
uInt fitting(Number size) {
    return static_cast<uInt>(std::min<std::size_t>(size, std::numeric_limits<uInt>::max()));
}

}  // namespace

Inflater::Inflater(std::string_view packed) : stream(std::make_unique<z_stream>()) {
    // zlib takes bytes by a pointer that may write, and does not.
    stream->next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(packed.data()));
    stream->avail_in = fitting(packed.size());
    if (inflateInit(stream.get()) != Z_OK) throw Failure("no memory to unpack with");
}

Inflater::~Inflater() { inflateEnd(stream.get()); }

bool Inflater::unpack(std::string& bytes, std::size_t most) {
    const std::size_t before = bytes.size();
    bytes.resize(before + most);
    stream->next_out = reinterpret_cast<Bytef*>(bytes.data() + before);
    stream->avail_out = fitting(most);
    const int result = ::inflate(stream.get(), Z_SYNC_FLUSH);
    bytes.resize(bytes.size() - stream->avail_out);
    return result == Z_OK && bytes.size() > before;
}

std::string inflate(std::string_view packed, std::size_t length) {
    std::string bytes;
    Inflater inflater(packed);
    while (bytes.size() < length && inflater.unpack(bytes, length - bytes.size())) {
    }
    return bytes;
}

}  // namespace swf
