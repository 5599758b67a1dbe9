#pragma once

#include <QString>
#include <span>

struct Environment;

/// The unit prices of treatments that are in force in a month, in yen; 0 until read.
class cls単価 {
public:
    explicit cls単価(Environment &environment) : m_environment(environment) {}

    qint32 nマッサージ = 0;
    qint32 n変形徒手 = 0;
    qint32 n温按法 = 0;
    qint32 n電気光線 = 0;
    qint32 n鍼灸1術 = 0;
    qint32 n鍼灸2術 = 0;
    qint32 n鍼灸1術初回 = 0;
    qint32 n鍼灸2術初回 = 0;
    qint32 n電気鍼温灸器 = 0;
    qint32 n鍼灸1術初検料 = 0;
    qint32 n鍼灸2術初検料 = 0;
    qint32 n施術報告書交付料 = 0;
    qint32 n基本往療費 = 0;
    qint32 n加算往療費 = 0;
    qint32 n定額料金1割 = 0;
    qint32 n定額料金2割 = 0;
    qint32 n定額料金3割 = 0;
    qint32 n実費施術費 = 0;
    qint32 n実費交通費 = 0;

    /// Reads the prices of a month, six digits yyyymm. Of two periods that cover it the later one counts; a
    /// price without a row keeps what it was.
    /// @return 0, or −1, which has been said; the prices read before the fault stay
    short iGetTanka(const QString &month);

    /// A price: where it stands in 療養費単価, and what it is called.
    struct Price {
        short iTankaKbn;
        qint32 nTankaCode;
        qint32 cls単価::*price;
        QStringView caption;
    };
    static std::span<const Price> prices();

private:
    Environment &m_environment;
};
