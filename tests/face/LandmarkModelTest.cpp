#include "DLibWrapper.h"
#include "FaceFixtures.h"
#include "LandmarkModelCache.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>

#include <dlib/image_processing/shape_predictor.h>

#include <future>

#include <gtest/gtest.h>

// An open right after start-up and a batch's two workers ask for the model
// while it is being read: every one waits for that one read and gets the
// same landmarks.
TEST(LandmarkModel, IsReadOnceForAnalysesThatStartWhileItIsBeingRead)
{
    // In a process of its own (face_tests_model_reading) the model is read
    // here; shuffled among the others it may have been read already.
    const int before = DLibWrapper::modelReads();
    const QImage photo = portraitPicture();
    DLibWrapper::startReadingModel();
    std::vector<std::future<DetectionResult>> analyses;
    for (int k = 0; k < 3; ++k)
        analyses.push_back(std::async(std::launch::async, [&] { return DLibWrapper::Detect_Facial_Points(photo); }));
    std::vector<DetectionResult> results;
    for (auto& analysis : analyses)
        results.push_back(analysis.get());
    for (const DetectionResult& result : results) {
        ASSERT_TRUE(result.ok()) << result.error.toStdString();
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.landmarks.size(), kLandmarkCount);
        EXPECT_EQ(result.landmarks, results.front().landmarks);
    }
    DLibWrapper::finishReadingModel();
    EXPECT_EQ(DLibWrapper::modelReads(), before == 0 ? 1 : before);
}

// A cache is taken only for the model file it was made from: the same
// file changed later (a package's update) or of another size is read
// again by dlib.
TEST(LandmarkModelCache, IsTakenOnlyForTheModelFileItWasMadeFrom)
{
    QTemporaryDir folder;
    const QByteArray cacheHome = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_CACHE_HOME", folder.path().toUtf8());
    dlib::shape_predictor model, read;
    dlib::deserialize(DLibWrapper::modelPath().toStdString()) >> model;
    const QString file = writtenFile(folder.path(), "model.dat", "a model file");
    const QDateTime made = QFileInfo(file).lastModified();
    for (const auto& [name, bytes, time] : {std::tuple{"unchanged", "", made}, {"newer", "", made.addSecs(3600)},
                                            {"older", "", made.addSecs(-3600)}, {"another size", "!", made}}) {
        QFile modelFile(writtenFile(folder.path(), "model.dat", "a model file"));
        ASSERT_TRUE(modelFile.open(QIODevice::Append) && modelFile.setFileTime(made, QFileDevice::FileModificationTime));
        LandmarkModelCache::write(file, model);
        modelFile.write(bytes);
        modelFile.flush();
        modelFile.setFileTime(time, QFileDevice::FileModificationTime);
        EXPECT_EQ(LandmarkModelCache::read(file, read), std::string(name) == "unchanged") << name;
    }
    qputenv("XDG_CACHE_HOME", cacheHome);
}
