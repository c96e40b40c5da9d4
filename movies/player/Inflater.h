#pragma once

#include <memory>
#include <string>
#include <string_view>

struct z_stream_s;

namespace swf {

/// Unpacks what zlib packed, piece by piece, so that a large file does not block the program.
class Inflater {
public:
    /// The bytes stay where they are while the inflater lives.
    explicit Inflater(std::string_view packed);
    ~Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Appends at most `most` unpacked bytes to `bytes`. False when there is no more to come: at
    /// the end, or where the packed bytes are damaged or end too early.
    [[nodiscard]] bool unpack(std::string& bytes, std::size_t most);

private:
    std::unique_ptr<z_stream_s> stream;
};

/// The first `length` bytes of what is unpacked at once; fewer where the packed bytes end.
[[nodiscard]] std::string inflate(std::string_view packed, std::size_t length);

}  // namespace swf
