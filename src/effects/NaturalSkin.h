#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "FaceSkin.h"
#include "PanelDescription.h"

#include <QCoreApplication>

// Natural skin: the face's skin evened the way a careful retoucher evens it
// — blotches, redness and small shadows (its medium-size detail) taken
// down by Evenness, its pores and fine texture (below Detail size) kept as
// they are or scaled by Texture, the light that models the face (its
// coarse shading) left alone. Only the skin changes (FaceSkin: no eyes,
// brows, lips, nostrils, hair or background), with a soft edge. It evens
// the photo every later step reads, after the healing.
struct NaturalSkin {
    using Settings = NaturalSkinSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Face, 4, QT_TRANSLATE_NOOP("Effects", "Natural Skin"), true};
    static const PanelDescription& panel();

    struct BandKey {
        qint64 photo;
        float detailSize;
        bool operator==(const BandKey&) const = default;
    };
    struct Key {
        qint64 photo;
        std::uint64_t evenness, texture;
        float detailSize;
        bool operator==(const Key&) const = default;
    };
    // The skin's medium band at the working scale, and where it changes
    // with how much (the soft-edged skin).
    struct Band {
        FaceSkin skin;
        cv::Mat medium, weight;
    };
    struct Memos {
        Memo<BandKey, Band> band; // Evenness and Texture only scale it
        Memo<Key, OpenedPhoto> evened;
    };

    // "natural skin": the photo the later steps read becomes the evened one.
    static void even(EffectPass& pass, const Settings& s, Memos& memos);

    // The photo evened with these settings (what `even` hands on).
    static OpenedPhoto evenedPhoto(const OpenedPhoto& photo, const Settings& s);
};
