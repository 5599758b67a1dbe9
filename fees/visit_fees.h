#pragma once

#include <QString>
#include <vector>

struct Environment;

/// The visit-fee bands that are in force in a month, and the fee for a distance. Bands of all offices count.
class cls往療費 {
public:
    explicit cls往療費(Environment &environment) : m_environment(&environment) {}

    /// Loads the bands of a month, six digits yyyymm.
    /// @return 0, or −1, which has been said; the bands loaded before stay
    short iGetOuryohiAll(const QString &month);

    /// The fee for a distance in metres, in yen, narrowed to 16 bits; 0 for no distance and without bands.
    /// @param distance one beyond the last band becomes that band's upper limit
    /// @param lastBand 1: what lies in the last band costs what the band before it does, where there is one
    short iGetOuryohi(qint32 &distance, short lastBand) const;

    /// @name A band, counted from 0 in the order of upper limits; 0 for one that is not there
    ///@{
    qint32 n往療単価(int i) const { return at(m_fees, i); }
    qint32 n往療距離MAX(int i) const { return at(m_limits, i); } ///< in metres
    ///@}
    short i往療区分数() const { return m_count; }

private:
    static qint32 at(const std::vector<qint32> &values, int i) {
        return i >= 0 && size_t(i) < values.size() ? values[size_t(i)] : 0;
    }

    Environment *m_environment;
    std::vector<qint32> m_limits, m_fees;
    short m_count = 0;
};
