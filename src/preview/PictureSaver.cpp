#include "PictureSaver.h"

#include <QDir>
#include <QImageWriter>
#include <QSaveFile>

#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

namespace {

// A moderate compression: Qt's default takes several seconds on 12
// megapixels, which would freeze the window during Save.
constexpr int kPngQuality = 50;

} // namespace

QString renderedPictureName(const QDateTime& when)
{
    // ICU honours the week-based year of "YYYY", which Qt's formatter lacks.
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString("YYYY-MM-dd-HH-mm-ss"), icu::Locale::getRoot(), status);
    // The wall-clock fields of `when`, handed to ICU as if they were UTC.
    format.adoptTimeZone(icu::TimeZone::createTimeZone("GMT"));
    const QDateTime wallClock(when.date(), when.time(), Qt::UTC);
    icu::UnicodeString text;
    format.format(UDate(wallClock.toMSecsSinceEpoch()), text);
    std::string utf8;
    text.toUTF8String(utf8);
    return QString::fromStdString(utf8) + ".png";
}

bool writePng(const QImage& picture, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QImageWriter writer(&file, "png");
    writer.setQuality(kPngQuality);
    return writer.write(picture) && file.commit();
}

QString writeRenderedPicture(const QImage& picture, const QString& folder, const QDateTime& when)
{
    const QString path = QDir(folder).filePath(renderedPictureName(when));
    writePng(picture, path);
    return path;
}

void fulfil(SaveRequest& request, const QImage& composed)
{
    if (!request.b_Save_Picture)
        return;
    request.s_Saved_Take_Picture.clear();
    request.s_Saved_Take_Picture = writeRenderedPicture(composed, request.s_Output_Folder, QDateTime::currentDateTime());
    request.b_Save_Picture = false;
}
