#include "tests/fuzz/playMovie.h"

#include "tests/fuzz/fuzz.h"

#include <QGuiApplication>

namespace {

/// Pictures and letters need one, for as long as the process lives.
void makeApplication() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    new QGuiApplication(count, arguments);
}

}  // namespace

void searches::movie(std::string_view input) {
    if (QCoreApplication::instance() == nullptr) makeApplication();
    playMovie(input);
}
