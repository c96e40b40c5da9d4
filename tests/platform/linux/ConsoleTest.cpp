#include "platform/Console.h"
#include "platform/linux/Descriptor.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/linux/forked.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <functional>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace {

/// Runs `action` in a process of its own with `errors` as its standard error. A process that is
/// blocked ends after 10 s.
[[nodiscard]] bool ends(int errors, const std::function<void()>& action) {
    return passesForked([&] {
        alarm(10);
        dup2(errors, STDERR_FILENO);
        action();
    });
}

void writeMuch() {
    console::prepare();
    for (int count = 0; count < 100; ++count)
        console::error(std::string(5000, 'x'));
}

std::string readAll(int descriptor) {
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    std::string all;
    std::array<char, 4096> buffer;
    for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;) {
        all.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return all;
}

struct Ends {
    Descriptor reader;
    Descriptor writer;
};

Ends makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

TEST(Console, WritesALineWithControlCharactersAsTheirCodes) {
    const Ends pipe = makePipe();
    EXPECT_TRUE(ends(pipe.writer.get(), [] {
        console::prepare();
        console::error("a \x1B[31m\r\nb \xC3\xA9");
    }));
    EXPECT_EQ(readAll(pipe.reader.get()), "a \\x1B[31m\\x0D\\x0Ab \xC3\xA9\n");
}

TEST(Console, EndsALineAt4000BytesBetweenCharacters) {
    const Ends pipe = makePipe();
    std::string euros;
    for (int count = 0; count < 2000; ++count)
        euros += "\xE2\x82\xAC";
    EXPECT_TRUE(ends(pipe.writer.get(), [&] { console::error(euros); }));
    EXPECT_EQ(readAll(pipe.reader.get()), euros.substr(0, 3999) + '\n');
}

TEST(Console, LosesWholeLinesInAPipeThatIsFullAndGoesOnWhenItIsRead) {
    const Ends pipe = makePipe();
    EXPECT_TRUE(ends(pipe.writer.get(), writeMuch));
    const std::string line = std::string(4000, 'x') + '\n';
    std::string all = readAll(pipe.reader.get());
    EXPECT_GE(all.size(), line.size());
    EXPECT_EQ(all.size() % line.size(), 0U);
    EXPECT_TRUE(ends(pipe.writer.get(), [] { console::error("after"); }));
    EXPECT_EQ(readAll(pipe.reader.get()), "after\n");
}

TEST(Console, LeavesAPipeBlockingForTheProgramsThatShareIt) {
    const Ends pipe = makePipe();
    EXPECT_TRUE(ends(pipe.writer.get(), writeMuch));
    EXPECT_EQ(fcntl(pipe.writer.get(), F_GETFL) & O_NONBLOCK, 0);
}

TEST(Console, KeepsTheLibrariesFromBlockingOnAPipe) {
    const Ends pipe = makePipe();
    EXPECT_TRUE(ends(pipe.writer.get(), [] {
        console::prepare();
        for (int count = 0; count < 1000; ++count)
            (void)!write(STDERR_FILENO, "a line of a library\n", 20);
    }));
}

TEST(Console, DoesNotBlockOnASocketThatIsFull) {
    std::array<int, 2> sockets{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()), 0);
    const Descriptor reader(sockets[0]);
    const Descriptor writer(sockets[1]);
    EXPECT_TRUE(ends(writer.get(), writeMuch));
    EXPECT_GE(readAll(reader.get()).size(), 4001U);
}

TEST(Console, DoesNotBlockOnATerminalThatIsStopped) {
    const Descriptor terminal(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_GE(terminal.get(), 0);
    ASSERT_EQ(grantpt(terminal.get()), 0);
    ASSERT_EQ(unlockpt(terminal.get()), 0);
    const Descriptor program(open(ptsname(terminal.get()), O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_GE(program.get(), 0);
    EXPECT_TRUE(ends(program.get(), writeMuch));
    ASSERT_EQ(tcflow(program.get(), TCOOFF), 0);
    EXPECT_TRUE(ends(program.get(), [] { console::error("stopped"); }));
    EXPECT_TRUE(ends(program.get(), writeMuch));
}

TEST(Console, PassesOverADiskThatIsFullAndAReaderThatIsGone) {
    const Descriptor full(open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_GE(full.get(), 0);
    EXPECT_TRUE(ends(full.get(), writeMuch));
    Ends pipe = makePipe();
    pipe.reader.reset();
    EXPECT_TRUE(ends(pipe.writer.get(), [] {
        // As the program does before anything else.
        std::signal(SIGPIPE, SIG_IGN);
        writeMuch();
    }));
}

TEST(Console, WritesBehindWhatAFileHoldsAlready) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "errors";
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_EQ(write(file.get(), "before\n", 7), 7);
    EXPECT_TRUE(ends(file.get(), [] {
        console::prepare();
        console::error("after");
    }));
    EXPECT_EQ(readFile(path), "before\nafter\n");
}

TEST(Console, KeepsTheNumbersOfStreamsThatAreClosedFromFiles) {
    const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    EXPECT_TRUE(ends(nowhere.get(), [] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);
        console::prepare();
        EXPECT_GT(open("/dev/null", O_RDONLY), STDERR_FILENO);
    }));
}

}  // namespace
