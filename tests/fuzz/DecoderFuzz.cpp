// libFuzzer target: arbitrary bytes as a photo file. Every input must come
// back as a picture or a refusal; a picture always has the size measured.
#include "PhotoDecoder.h"

#include <QCoreApplication>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication application(*argc, *argv); // image plugins are found through it
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const DecodedPhoto photo = decodePhotoData(bytes, "fuzzed");
    if (photo.ok() && (photo.img_Basic.isNull() || photo.img_Basic.size() != photo.imgSize.toSize()))
        std::abort();
    if (!photo.ok() && photo.error.isEmpty())
        std::abort();
    return 0;
}
