// Writes the starting corpora of the fuzz targets: the test portrait in
// every format the decoder reads, small, and settings files.
#include "../face/PhotoFixtures.h"
#include "../face/TiffPages.h"
#include "EditingStateJson.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QJsonDocument>

#include <cstdio>

namespace {

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication application(argc, argv);
    if (argc != 4 && argc != 5) {
        std::fprintf(stderr, "usage: make_fuzz_seeds PORTRAIT DECODER_DIR SETTINGS_DIR [METADATA_DIR]\n");
        return 2;
    }
    const QImage portrait = QImage(argv[1]).scaled(48, 48);
    const QDir photos(argv[2]), settings(argv[3]);
    for (const char* format : {"png", "jpg", "bmp", "tif"})
        portrait.save(photos.filePath(QString("portrait.%1").arg(format)), format);
    write(photos.filePath("two-pages.tif"), tiffOfPages({{portrait.scaled(8, 8)}, {portrait}}));
    const QImage p3 = inColourSpace(portrait, QColorSpace::DisplayP3);
    write(photos.filePath("portrait.heic"), heifOf(p3, heif_compression_HEVC, heif_orientation_rotate_90_cw));
    write(photos.filePath("portrait.avif"), heifOf(p3, heif_compression_AV1));
    write(photos.filePath("p3.webp"), encodedAs(p3, "webp"));
    if (argc == 5) { // files with camera tags, a profile and an XMP packet
        const QDir tagged(argv[4]);
        const std::map<std::string, std::string> tags = {{"Exif.Image.Model", "Testcam"},
                                                         {"Exif.Image.Orientation", "6"},
                                                         {"Exif.Photo.DateTimeOriginal", "2026:05:04 10:11:12"}};
        for (const char* format : {"jpeg", "png", "tiff", "webp"})
            write(tagged.filePath(QString("tagged.%1").arg(format)),
                  withExif(encodedAs(p3, format), tags, encodedAs(portrait.scaled(8, 8), "jpeg")));
    }
    write(settings.filePath("defaults.json"), QJsonDocument(toJson(EditingState{})).toJson());
    EditingState everything;
    everything.b_Apply_Cheeks = everything.b_Face_Skin_Smooth = everything.b_Color_Lips = true;
    everything.pt_MakeUp_Center_Left = {30, 70};
    everything.color_Color_Lips = {0.75f, 0.2f, 0.3f, 0.5f};
    everything.b_Heal_Blemishes = true;
    write(settings.filePath("version-1-spots.json"),
          R"({"b_Heal_Blemishes": true, "array_Healed_Spots": [[41.5, 52], [60, 48.25]], "array_Kept_Spots": [[33, 61]]})");
    PhotoEditsOf done{"portrait.png", {512, 512}, {}};
    done.edits.array_Healed_Spots = {{41.5, 52}, {60, 48.25}};
    done.edits.array_Kept_Spots = {{33, 61}};
    done.edits.rect_Cheek_Left_Area_To_Paint = {120, 200, 60, -40};
    write(settings.filePath("changed.json"),
          QJsonDocument(exportedSettings(everything, &done)).toJson(QJsonDocument::Compact));
    return 0;
}
