#include "tests/fuzz/playMovie.h"

#include "tests/fuzz/fuzz.h"

#include <QGuiApplication>

void prepareFuzz(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(argc, argv);
}

void fuzz(std::string_view input) { playMovie(input); }
