#include "platform/linux/bus/MprisTitle.h"

#include <QDBusArgument>
#include <QStringList>

namespace {

using namespace std::string_view_literals;

constexpr auto start = "1. "sv;
constexpr auto end = " - Winamp"sv;
constexpr auto paused = " [Paused]"sv;

/// The song is cut and not the title's end, which tells where the song ends; and at one place, so
/// that it stays the same song when it is paused.
constexpr std::size_t longestTitle = 2048;
constexpr std::size_t longestSong = longestTitle - start.size() - end.size() - paused.size();

/// Without control characters, and not much longer than what can be shown.
std::string cleaned(const QString& text) {
    QString kept;
    for (const QChar letter : text) {
        // One letter more than there is room for: where the last one is half a character, it is
        // cut.
        if (kept.size() > static_cast<qsizetype>(longestSong)) break;
        if (letter.category() != QChar::Other_Control) kept += letter;
    }
    return kept.toStdString();
}

QVariantMap entriesOf(const QVariant& metadata) {
    if (metadata.metaType() != QMetaType::fromType<QDBusArgument>()) return metadata.toMap();
    const auto argument = metadata.value<QDBusArgument>();
    if (argument.currentSignature() != "a{sv}") return {};
    return qdbus_cast<QVariantMap>(argument);
}

/// The list that it has to be; a single text is taken too, for players that write one.
QStringList textsIn(const QVariant& value) {
    if (value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QStringList) {
        return value.toStringList();
    }
    return {};
}

std::string joined(const QStringList& artists) {
    std::string all;
    for (const QString& artist : artists) {
        const std::string name = cleaned(artist);
        if (name.empty()) continue;
        if (!all.empty()) all += ", "sv;
        all += name;
        if (all.size() > longestSong) break;
    }
    return all;
}

/// Cuts between two characters of UTF-8.
void shorten(std::string& text, std::size_t size) {
    if (text.size() <= size) return;
    const auto isWithinCharacter = [&] {
        return (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U;
    };
    while (size > 0 && isWithinCharacter())
        --size;
    text.resize(size);
}

}  // namespace

std::string mprisSong(const QVariant& metadata) {
    const QVariantMap entries = entriesOf(metadata);
    const QVariant titleEntry = entries.value("xesam:title");
    if (titleEntry.typeId() != QMetaType::QString) return {};
    const std::string title = cleaned(titleEntry.toString());
    if (title.empty()) return {};
    std::string song = joined(textsIn(entries.value("xesam:artist")));
    if (!song.empty()) song += " - "sv;
    song += title;
    shorten(song, longestSong);
    return song;
}

std::string mprisTitle(std::string_view song, MprisStatus status) {
    if (song.empty()) return {};
    std::string title;
    title.append(start).append(song).append(end);
    if (status == MprisStatus::Paused) title += paused;
    return title;
}
