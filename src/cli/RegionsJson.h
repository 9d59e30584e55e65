#pragma once

#include "FaceRegions.h"

#include <QJsonArray>
#include <QJsonObject>

QJsonArray toJson(QPointF point);
QJsonArray toJson(const QRectF& rect);  // [x, y, width, height]
QJsonArray toJson(const PointList& points);
QJsonArray toJson(const QPainterPath& path); // its vertices in order, closing point included

// Every region field under its own name.
QJsonObject toJson(const FaceRegions& regions);
