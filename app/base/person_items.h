#pragma once

#include <QStringView>
#include <array>

/// The items of data files that say whose a record is: number, name.
///@{
inline constexpr std::array<QStringView, 3> personNumberItems{u"患者ID", u"利用者ID", u"IDNo."};
inline constexpr std::array<QStringView, 3> personNameItems{u"患者名", u"患者氏名", u"利用者名"};
///@}
