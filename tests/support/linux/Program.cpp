#include "tests/support/linux/Program.h"

#include "tests/support/Peer.h"
#include "tests/support/process.h"
#include "tests/support/readFile.h"
#include "tests/support/storedSettings.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <tuple>

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

constexpr int signalled = 256;

/// Its end to read from, and the one to write to.
std::pair<Descriptor, Descriptor> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

/// Fills a pipe to the last byte. The end to write to blocks again afterwards.
void fill(int writer) {
    fcntl(writer, F_SETFL, O_NONBLOCK);
    const std::string page(4096, 'x');
    while (write(writer, page.data(), page.size()) > 0) {
    }
    fcntl(writer, F_SETFL, 0);
}

/// The program that is tested: what starts it, if anything has to, and its file.
struct Tested {
    std::vector<std::string> starter;
    std::filesystem::path file = COBWEAVE_EXECUTABLE;
};

Tested tested() {
    const char* const command = std::getenv("COBWEAVE_PROGRAM");
    if (command == nullptr) return {};
    std::istringstream words(command);
    std::vector<std::string> starter{std::istream_iterator<std::string>(words), {}};
    const std::filesystem::path file = starter.back();
    starter.pop_back();
    return {starter, file};
}

/// Its address space, in bytes, and what of it is in memory.
struct Sizes {
    std::size_t all = 0;
    std::size_t resident = 0;
};

/// Copies of the program that have not been waited for.
int runningPrograms = 0;

bool isPortFree() {
    try {
        (void)Peer::connectedTo(Program::port);
        return false;
    } catch (const std::runtime_error&) {
        return true;
    }
}

Sizes sizesOf(pid_t process) {
    std::ifstream table("/proc/" + std::to_string(process) + "/statm");
    Sizes pages;
    table >> pages.all >> pages.resident;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return {pages.all * page, pages.resident * page};
}

}  // namespace

bool Program::isForWindows() { return tested().file.extension() == ".exe"; }

Program::Program(const Options& options) {
    if (options.prepare) options.prepare(folder.path());
    auto [outputReader, childOutput] = makePipe();
    output = std::move(outputReader);
    Descriptor childErrors;
    if (options.unread || options.blocked) {
        std::tie(blockedErrors, childErrors) = makePipe();
        if (options.blocked) fill(childErrors.get());
        if (options.unread) blockedErrors.reset();
    } else {
        childErrors = Descriptor(
            open((folder.path() / "errors").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    }
    // A copy: it keeps its notes beside itself, and nobody else's are to be touched.
    const Tested original = tested();
    const std::filesystem::path executable = folder.path() / original.file.filename();
    std::filesystem::copy_file(original.file, executable);
    for (const auto& file : std::filesystem::directory_iterator(original.file.parent_path())) {
        if (file.path().extension() != ".swf") continue;
        std::filesystem::copy_file(file, folder.path() / file.path().filename());
    }
    const std::filesystem::path settings =
        options.settings.empty() ? folder.path() : options.settings;
    ProcessStart start{.command = original.starter,
                       .environment = {{"WAYLAND_DISPLAY", {}}, {"QT_QPA_PLATFORM", {}}},
                       .output = childOutput.get(),
                       .errors = childErrors.get(),
                       .descriptors = options.descriptors};
    start.command.push_back(executable);
    start.command.insert(start.command.end(), options.arguments.begin(), options.arguments.end());
    if (isForWindows()) {
        start.environment["APPDATA"] = windowsPath(settings);
    } else {
        start.environment["DISPLAY"] = std::nullopt;
        start.environment["XDG_CONFIG_HOME"] = settings;
    }
    for (const auto& [name, value] : options.environment)
        start.environment[name] = value;
    process = startProcess(start);
    ++runningPrograms;
}

Program::~Program() {
    if (isRunning()) kill(process, SIGKILL);
    while (isRunning())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    // Wine closes what a process had open a little after its end.
    if (--runningPrograms == 0 && isForWindows()) (void)becomesTrue([] { return isPortFree(); });
}

std::string Program::waitUntilReady() {
    while (outputSoFar.find('\n') == std::string::npos) {
        if (!readOutput()) throw std::runtime_error("the program has ended: " + errors());
    }
    return outputSoFar.substr(0, outputSoFar.find('\n'));
}

std::string Program::waitForOutput() {
    while (readOutput()) {
    }
    return outputSoFar;
}

bool Program::readOutput() {
    const auto limit = std::chrono::milliseconds(waitLimit).count();
    pollfd entry{output.get(), POLLIN, 0};
    std::array<char, 1024> buffer;
    if (poll(&entry, 1, static_cast<int>(limit)) != 1) {
        throw std::runtime_error("the program says nothing: " + errors());
    }
    const ssize_t count = read(output.get(), buffer.data(), buffer.size());
    if (count > 0) outputSoFar.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0;
}

void Program::setSetting(const std::string& key, const std::string& value) {
    writeSettings(folder.path(), storedOptions({{key, value}}));
}

void Program::signal(int number) const {
    if (!isForWindows() || number == SIGKILL) {
        kill(process, number);
    } else if (std::system("wine taskkill /IM cobweave.exe >/dev/null 2>&1") != 0) {
        throw std::runtime_error("the program cannot be asked to end");
    }
}

int Program::waitForEnd() {
    const auto deadline = std::chrono::steady_clock::now() + waitLimit;
    while (isRunning()) {
        if (std::chrono::steady_clock::now() > deadline) {
            throw std::runtime_error("the program does not end");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return WIFSIGNALED(status) ? signalled + WTERMSIG(status) : WEXITSTATUS(status);
}

bool Program::isRunning() {
    if (process > 0 && waitpid(process, &status, WNOHANG) == process) process = -1;
    return process > 0;
}

std::string Program::errors() const { return readFile(folder.path() / "errors"); }

std::size_t Program::openDescriptors() const {
    const auto entries =
        std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

long Program::wakeUps() const { return wakeUpsOf(process); }

bool Program::limitMemory(std::size_t more) const {
    constexpr std::size_t tooMuch = std::size_t{1} << 40;
    const std::size_t now = sizesOf(process).all;
    rlimit limit{};
    if (now > tooMuch || prlimit(process, RLIMIT_AS, nullptr, &limit) != 0) return false;
    limit.rlim_cur = now + more;
    return prlimit(process, RLIMIT_AS, &limit, nullptr) == 0;
}

std::size_t Program::memory() const { return sizesOf(process).resident; }

std::filesystem::path Program::store() const { return storeIn(folder.path()); }
