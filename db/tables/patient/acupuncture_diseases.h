#pragma once

#include <QStringView>
#include <array>

/// The diseases behind iHKSyobyou01Flg to iHKSyobyou06Flg; the seventh flag is any other disease.
inline constexpr std::array<QStringView, 6> acupunctureDiseaseNames{
    u"神経痛", u"リウマチ", u"頸腕症候群", u"五十肩", u"腰痛症", u"頸椎捻挫後遺症"};
