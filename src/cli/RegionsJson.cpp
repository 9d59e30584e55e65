#include "RegionsJson.h"

QJsonArray toJson(QPointF point)
{
    return {point.x(), point.y()};
}

QJsonArray toJson(const QRectF& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QJsonArray toJson(const PointList& points)
{
    QJsonArray array;
    for (const QPointF& p : points)
        array.append(toJson(p));
    return array;
}

QJsonArray toJson(const QPainterPath& path)
{
    QJsonArray array;
    for (int i = 0; i < path.elementCount(); ++i)
        array.append(toJson(QPointF(path.elementAt(i))));
    return array;
}

QJsonObject toJson(const FaceRegions& regions)
{
    QJsonObject object;
    regions.forEachField([&](const char* name, const auto& field) { object.insert(name, toJson(field)); });
    return object;
}
