// A category of the catalogue: 5 properties.
#pragma once

#include "store/records/ItemRecord.h"

/// Stored codes of the catalogue kinds.
enum class ECatalogueKind : qint16 { Foods = 0, Menus = 1, Recipes = 2, Exercises = 3 };

/// A larger picture is not stored.
inline constexpr qint64 kLargestPictureBytes = 4LL << 20U;
inline constexpr int kMaximumCategories = 256;  ///< over all kinds together

class CCategory : public CItemRecord {
  public:
    CCategory();
    [[nodiscard]] ECatalogueKind GetKind() const;
    void SetKind(ECatalogueKind kind);
    /// Unique within the kind.
    [[nodiscard]] qint32 GetId() const;
    void SetId(qint32 id);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    /// Bitmap data from the information header on. 14 zero bytes that are not part of the picture
    /// may follow, which readers must tolerate. Empty when there is no picture.
    [[nodiscard]] QByteArray GetLargePicture() const;
    void SetLargePicture(const QByteArray& picture);
    [[nodiscard]] QByteArray GetSmallPicture() const;
    void SetSmallPicture(const QByteArray& picture);
};

/// One of the 54 names shown to the user: 3 properties.
class CNutrientName : public CItemRecord {
  public:
    CNutrientName();
    CNutrientName(qint32 index, const QString& name);
    [[nodiscard]] qint32 GetIndex() const;
    [[nodiscard]] QString GetName() const;
};

/// Six 16-bit settings of a list view, kept beside the items of Foods and Exlib: 8 properties.
class CViewSettings : public CItemRecord {
  public:
    /// Property 0 of the record: larger than every category identifier.
    static constexpr qint32 kMarker = 0x200000;
    static constexpr int kCount = 6;

    CViewSettings();
    /// `index` 0 to 5.
    [[nodiscard]] qint16 GetSetting(int index) const;
    void SetSetting(int index, qint16 value);
};
