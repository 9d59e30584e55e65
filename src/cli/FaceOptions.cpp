#include "FaceOptions.h"

namespace {

// Whole numbers separated by commas, exactly `count` of them.
bool wholeNumbers(const QString& text, int count, QList<int>& numbers)
{
    const QStringList parts = text.split(',');
    if (parts.size() != count)
        return false;
    for (const QString& part : parts) {
        bool ok = false;
        numbers << part.trimmed().toInt(&ok);
        if (!ok)
            return false;
    }
    return true;
}

const char* const kBoxNeeds = "--face-box needs X,Y,W,H: whole pixels of the upright photo, W and H at least 8";

} // namespace

bool takeFaceOptions(QStringList& arguments, FacePick& pick, QString& error)
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString option = arguments[i];
        if (option == "--all-faces") {
            pick.every = true;
            arguments.removeAt(i--);
            continue;
        }
        if (option != "--face" && option != "--face-box")
            continue;
        if (i + 1 >= arguments.size()) {
            error = option == "--face" ? "--face needs a face number from 1 up." : QString(kBoxNeeds) + ".";
            return false;
        }
        const QString value = arguments.takeAt(i + 1);
        arguments.removeAt(i--);
        QList<int> numbers;
        if (option == "--face") {
            if (!wholeNumbers(value, 1, numbers) || numbers[0] < 1) {
                error = QString("--face needs a face number from 1 up, not \"%1\".").arg(value);
                return false;
            }
            pick.number = numbers[0];
        } else {
            if (!wholeNumbers(value, 4, numbers) || numbers[0] < 0 || numbers[1] < 0 || numbers[2] < 8 || numbers[3] < 8) {
                error = QString("%1, not \"%2\".").arg(kBoxNeeds, value);
                return false;
            }
            pick.box = QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
        }
    }
    if (pick.number != 0 && !pick.box.isNull()) {
        error = "--face and --face-box cannot be given together.";
        return false;
    }
    if (pick.every && (pick.number != 0 || !pick.box.isNull())) {
        error = QString("--all-faces cannot be given with %1.").arg(pick.number != 0 ? "--face" : "--face-box");
        return false;
    }
    return true;
}

QString noSuchFaceMessage(const FacePick& pick, int facesFound, QSize photo)
{
    if (!pick.box.isNull())
        return QString("--face-box %1,%2,%3,%4 lies outside the photo: X and X+W up to %5, Y and Y+H up to %6.")
            .arg(pick.box.x()).arg(pick.box.y()).arg(pick.box.width()).arg(pick.box.height())
            .arg(photo.width()).arg(photo.height());
    if (facesFound == 0)
        return QString("--face %1: no face was found on the picture.").arg(pick.number);
    return QString("--face %1: the picture has %2 face%3; choose 1 to %2.")
        .arg(pick.number).arg(facesFound).arg(facesFound == 1 ? "" : "s");
}

QString severalFacesMessage(int facesFound)
{
    return QString("The picture has %1 faces: --face N takes one (1 is the largest), --all-faces takes every one.")
        .arg(facesFound);
}
