// The detection is dlib's own work, split where its results do not depend
// on the split: the pyramid's pictures are made on one core (by
// pyramidDown, dlib's resize to the byte) while the other extracts the
// features of the full-size level; each level's features and its five
// filter scores (hogSaliency) are one task. The maker scans the level
// before the one it just made, so only two or three pictures of the
// pyramid are held at once (all of them: over 400 MB at 64 megapixels);
// the other core takes the levels left after the full-size one.
// The detections are gathered, sorted and suppressed exactly as dlib's
// object_detector does.

#include "HogFaceDetector.h"

#include <dlib/image_processing.h>
#include <dlib/image_processing/scan_fhog_pyramid.h>
#include <dlib/opencv/cv_image.h>

#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace {

using Pyramid = dlib::pyramid_down<6>;
using Extractor = dlib::default_fhog_feature_extractor;
using Scanner = dlib::scan_fhog_pyramid<Pyramid, Extractor>;
using Features = dlib::array<dlib::array2d<float>>;
using Picture = dlib::array2d<dlib::rgb_pixel>;
using Found = std::vector<std::pair<double, dlib::rectangle>>;

// As dlib's create_fhog_pyramid counts them.
unsigned long levelCount(const Scanner& scanner, dlib::rectangle rect)
{
    unsigned long levels = 0;
    Pyramid pyramid;
    do {
        rect = pyramid.rect_down(rect);
        ++levels;
    } while (rect.width() >= scanner.get_min_pyramid_layer_width()
             && rect.height() >= scanner.get_min_pyramid_layer_height() && levels < scanner.get_max_pyramid_levels());
    return levels;
}

// Runs fn(task) for tasks first … end - 1 on both cores, one task a stripe
// so the larger ones first keep both busy; the first failure is thrown
// again here.
template <typename Fn>
void eachTask(int first, int end, Fn&& fn)
{
    std::exception_ptr failure;
    std::mutex guard;
    cv::parallel_for_(
        cv::Range(first, end),
        [&](const cv::Range& tasks) {
            for (int task = tasks.start; task < tasks.end; ++task) {
                try {
                    fn(task);
                } catch (...) {
                    const std::lock_guard lock(guard);
                    if (!failure)
                        failure = std::current_exception();
                }
            }
        },
        double(end - first));
    if (failure)
        std::rethrow_exception(failure);
}

// The levels handed out one by one to two workers, and the pictures of the
// pyramid as one worker makes them. A worker that needs a picture nobody is
// making yet makes the pyramid itself (OpenCV may run both workers on one
// thread, one after the other), so no worker waits for a job not running.
class LevelQueue {
public:
    explicit LevelQueue(unsigned long levels)
        : levels_(levels)
    {
    }

    // Whether the caller is the first to ask for the level.
    bool claim(unsigned long level) { return !claimed_[level].exchange(true); }

    // A level's picture is done with once it was scanned and the next
    // level made from it: whether the caller is the last of the two.
    bool doneWith(unsigned long level)
    {
        return level + 1 == levels_ || users_[level].fetch_sub(1) == 1;
    }

    template <typename MakeFn>
    void makePictures(MakeFn&& make)
    {
        if (making_.exchange(true))
            return;
        try {
            make([this](unsigned long level) { announce(level, false); });
        } catch (...) {
            announce(levels_, true); // nobody waits for pictures that will not come
            throw;
        }
        announce(levels_, false);
    }

    template <typename MakeFn>
    void waitForPicture(unsigned long level, MakeFn&& make)
    {
        makePictures(make);
        std::unique_lock lock(guard_);
        madeOne_.wait(lock, [&] { return made_ >= level; });
        if (failed_)
            throw std::runtime_error("the pyramid of the photo could not be made");
    }

private:
    void announce(unsigned long made, bool failed)
    {
        const std::lock_guard lock(guard_);
        made_ = made;
        failed_ = failed;
        madeOne_.notify_all();
    }

    const unsigned long levels_;
    std::unique_ptr<std::atomic<bool>[]> claimed_ = std::make_unique<std::atomic<bool>[]>(levels_);
    std::unique_ptr<std::atomic<int>[]> users_ = [this] {
        auto users = std::make_unique<std::atomic<int>[]>(levels_);
        for (unsigned long level = 0; level < levels_; ++level)
            users[level] = 2;
        return users;
    }();
    std::atomic<bool> making_{false};
    std::mutex guard_;
    std::condition_variable madeOne_;
    unsigned long made_ = 0;
    bool failed_ = false;
};

struct Scan {
    const dlib::frontal_face_detector& detector;
    const Scanner& scanner = detector.get_scanner();
    const int cellSize = int(scanner.get_cell_size());
    const long windowWidth = long(scanner.get_fhog_window_width());
    const long windowHeight = long(scanner.get_fhog_window_height());
    const long boxWidth = windowWidth - 2 * long(scanner.get_padding());
    const long boxHeight = windowHeight - 2 * long(scanner.get_padding());

    // A filter's own threshold: the last weight.
    double threshold(size_t filter) const { return detector.get_processed_w(filter).w(scanner.get_num_dimensions()); }

    template <typename Image>
    void extract(const Image& image, Features& features) const
    {
        scanner.get_feature_extractor()(image, features, cellSize, int(windowHeight), int(windowWidth));
    }

    // dlib's detect_from_fhog_pyramid for one filter on one level.
    void detect(size_t filter, unsigned long level, const Features& features, double minimum, Found& found) const
    {
        dlib::array2d<float> saliency;
        const dlib::rectangle area =
            hogSaliency(detector.get_processed_w(filter).get_detect_argument(), features, saliency);
        const Pyramid pyramid;
        for (long r = area.top(); r <= area.bottom(); ++r)
            for (long c = area.left(); c <= area.right(); ++c)
                if (saliency[r][c] >= minimum) {
                    dlib::rectangle rect = scanner.get_feature_extractor().feats_to_image(
                        dlib::centered_rect(dlib::point(c, r), boxWidth, boxHeight), cellSize, windowHeight,
                        windowWidth);
                    rect = pyramid.rect_up(rect, level);
                    found.push_back(std::make_pair(double(saliency[r][c]), rect));
                }
    }
};

// object_detector's gathering: each filter's detections over all levels,
// sorted by score; all filters' sorted by confidence; then every box that
// overlaps one already kept dropped.
std::vector<HogDetection> gathered(const Scan& scan, const std::vector<Found>& found, unsigned long levels)
{
    const size_t filters = scan.detector.num_detectors();
    std::vector<dlib::rect_detection> all;
    for (size_t filter = 0; filter < filters; ++filter) {
        Found dets;
        for (unsigned long level = 0; level < levels; ++level) {
            const Found& part = found[filter * levels + level];
            dets.insert(dets.end(), part.begin(), part.end());
        }
        std::sort(dets.rbegin(), dets.rend(), dlib::impl::compare_pair_rect);
        for (const auto& [score, rect] : dets) {
            dlib::rect_detection d;
            d.detection_confidence = score - scan.threshold(filter);
            d.weight_index = filter;
            d.rect = rect;
            all.push_back(d);
        }
    }
    if (filters > 1)
        std::sort(all.rbegin(), all.rend());
    const dlib::test_box_overlap& overlaps = scan.detector.get_overlap_tester();
    std::vector<HogDetection> kept;
    std::vector<dlib::rectangle> keptRects;
    for (const dlib::rect_detection& d : all) {
        if (std::any_of(keptRects.begin(), keptRects.end(), [&](const dlib::rectangle& k) { return overlaps(k, d.rect); }))
            continue;
        keptRects.push_back(d.rect);
        kept.push_back({d.detection_confidence, d.weight_index, d.rect.left(), d.rect.top(), d.rect.right(),
                        d.rect.bottom()});
    }
    return kept;
}

RgbPixels pixelsOf(const Picture& picture)
{
    return {reinterpret_cast<const unsigned char*>(dlib::image_data(picture)), picture.nc(), picture.nr(),
            size_t(dlib::width_step(picture))};
}

} // namespace

std::vector<HogDetection> detectFaces(const dlib::frontal_face_detector& detector, const RgbPixels& photo,
                                      double adjustThreshold)
{
    const cv::Mat pixels(int(photo.height), int(photo.width), CV_8UC3, const_cast<unsigned char*>(photo.bytes),
                         photo.bytesPerLine);
    const dlib::cv_image<dlib::rgb_pixel> image(pixels);
    const Scan scan{detector};
    const unsigned long levels = levelCount(scan.scanner, dlib::get_rect(image));
    const size_t filters = detector.num_detectors();
    std::vector<Picture> pictures(levels);
    std::vector<Found> found(filters * levels);
    LevelQueue queue(levels);
    const auto scanLevel = [&](unsigned long level) {
        Features features;
        if (level == 0)
            scan.extract(image, features);
        else
            scan.extract(pictures[level], features);
        if (level > 0 && queue.doneWith(level))
            pictures[level].clear();
        for (size_t filter = 0; filter < filters; ++filter)
            scan.detect(filter, level, features, scan.threshold(filter) + adjustThreshold,
                        found[filter * levels + level]);
    };
    const auto makePyramid = [&](const std::function<void(unsigned long)>& made) {
        for (unsigned long level = 1; level < levels; ++level) {
            pyramidDown(level == 1 ? photo : pixelsOf(pictures[level - 1]), pictures[level]);
            if (level >= 2 && queue.doneWith(level - 1))
                pictures[level - 1].clear();
            made(level);
            if (level >= 2 && queue.claim(level - 1))
                scanLevel(level - 1);
        }
    };
    // One worker makes the pyramid's pictures, the other starts with the
    // full-size level; then both take the levels nobody has taken.
    queue.claim(0);
    eachTask(0, 2, [&](int worker) {
        if (worker == 0)
            queue.makePictures(makePyramid);
        else
            scanLevel(0);
        for (unsigned long level = 1; level < levels; ++level)
            if (queue.claim(level)) {
                queue.waitForPicture(level, makePyramid);
                scanLevel(level);
            }
    });
    return gathered(scan, found, levels);
}
