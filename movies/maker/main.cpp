#include "movies/maker/Description.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdlib>
#include <fstream>
#include <iostream>

/// Turns a movie's description into the movie: make_movie VERSION DESCRIPTION MOVIE.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt looks for a display in this folder, and complains of a builder who has none.
    const QTemporaryDir runtimeFolder;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeFolder.path()));
    const QGuiApplication application(argc, argv);
    if (argc != 4) {
        std::cerr << "make_movie VERSION DESCRIPTION MOVIE" << std::endl;
        return EXIT_FAILURE;
    }
    const std::string movie = Description(argv[2], argv[1]).file();
    std::ofstream file(argv[3], std::ios::binary | std::ios::trunc);
    file << movie;
    file.close();
    if (file) return EXIT_SUCCESS;
    std::cerr << argv[3] << ": cannot be written" << std::endl;
    return EXIT_FAILURE;
}
