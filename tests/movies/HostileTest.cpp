#include "tests/fuzz/playMovie.h"
#include "tests/movies/MovieFile.h"
#include "tests/support/readFile.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace {

namespace fs = std::filesystem;

/// A movie of ours with its content laid open.
std::string unpacked(const fs::path& path) {
    const std::string file = readFile(path);
    QByteArray size(4, '\0');
    const QByteArray body =
        qUncompress(QByteArray("\0\1\0\0", 4) + QByteArray::fromStdString(file.substr(8)));
    return "FWS" + file.substr(3, 5) + body.toStdString();
}

class HostileMovie : public testing::TestWithParam<std::string> {
protected:
    std::string plain = unpacked(fs::path(COBWEAVE_MOVIES) / (GetParam() + ".swf"));
};

TEST_P(HostileMovie, MayEndAtEveryByte) {
    ASSERT_GT(plain.size(), 100U);
    // Every byte of the beginning, where the heads are, and then ever farther apart.
    for (std::size_t end = 0; end < plain.size(); end += 1 + end / 25) {
        playMovie(std::string_view(plain).substr(0, end));
    }
    const std::string file = readFile(fs::path(COBWEAVE_MOVIES) / (GetParam() + ".swf"));
    for (std::size_t end = 0; end < file.size(); end += 1 + end / 15) {
        playMovie(std::string_view(file).substr(0, end));
    }
}

TEST_P(HostileMovie, MayHaveAnyBitTurned) {
    std::minstd_rand chance(7);
    for (int round = 0; round < 60; ++round) {
        std::string turned = plain;
        for (int count = 0; count <= round % 4; ++count) {
            char& byte = turned[8 + chance() % (turned.size() - 8)];
            byte = static_cast<char>(static_cast<unsigned char>(byte) ^ 1U << chance() % 8);
        }
        playMovie(turned);
    }
}

INSTANTIATE_TEST_SUITE_P(Ours, HostileMovie,
                         testing::Values("button", "about", "generaloptions", "signingin",
                                         "tsmessages", "alerts", "windowrename"),
                         [](const auto& tested) { return tested.param; });

}  // namespace
