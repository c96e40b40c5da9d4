#include "bench/relay/server/traffic.h"

namespace {

std::string lineOf(std::size_t size) {
    std::string line = "ILN 5 NLN someone@example.com Some%20Name 0 ";
    line.resize(size - traffic::messageEnd.size(), 'x');
    line += traffic::messageEnd;
    return line;
}

}  // namespace

std::string traffic::message() { return lineOf(messageSize); }

std::string traffic::block() { return lineOf(blockSize); }
