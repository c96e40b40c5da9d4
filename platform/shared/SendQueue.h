#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Bytes that wait to be sent. Taking from the front costs no more than was taken, however much
/// waits, and an empty queue holds no memory.
class SendQueue {
public:
    [[nodiscard]] std::size_t size() const { return bytes.size() - sent; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] std::string_view waiting() const { return std::string_view(bytes).substr(sent); }

    void append(std::string_view data) { bytes += data; }

    /// Removes the first `count` bytes.
    void remove(std::size_t count) {
        sent += count;
        if (empty()) {
            clear();
        } else if (sent > bytes.size() / 2) {
            bytes.erase(0, sent);
            sent = 0;
        }
    }

    void clear() {
        // An assignment would keep the memory.
        std::string().swap(bytes);
        sent = 0;
    }

private:
    std::string bytes;
    /// How much of the front has gone already.
    std::size_t sent = 0;
};
