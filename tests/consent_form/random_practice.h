#pragma once

#include "tests/consent_form/practice.h"

#include <random>

/// A doctor as the masters have him; empty texts are not stored.
struct Doctor {
    QString name, institution, address;
    int hospital = 0; ///< 0 none
    bool writes = false;
};

struct Row {
    int patient = 0, date = 0;
    bool correction = false, newest = false, oral = false;
    int doctor = 0; ///< 0 none, beyond the last: in no list
    QString notedName, notedInstitution, notedAddress;
    bool continues = false; ///< what its letter is

    /// No other row has it.
    QString diagnosis() const;
    ConsentRowKey key() const { return {{1, 1, patient}, date, short(correction), correction ? date : 0}; }
};

struct Patient {
    bool acupuncture = false, ended = false;
    int staff = 1;
    int firstTreatment = 0;
};

/// A practice whose masters, patients and rows are drawn at random, and a reckoning of its own of what
/// documents must say of them.
class RandomPractice {
public:
    explicit RandomPractice(unsigned seed);

protected:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }
    bool oneIn(int n) { return upTo(n - 1) == 0; }

    /// @name The reckoning
    ///@{
    const Doctor *doctorOf(const Row &row) const;
    QString doctorName(const Row &row) const;
    QString institution(const Row &row) const;
    QString address(const Row &row) const;
    QString addressee(const Row &row) const {
        return doctorName(row) + u'|' + institution(row) + u'|' + address(row);
    }
    QString name(int patient) const { return QStringLiteral("利用者%1様").arg(patient); }
    /// Of the newest rows of a patient and kind, the latest.
    bool isLast(const Row &row) const;
    const Row *rowOfDiagnosis(const QString &diagnosis) const;
    bool isAgain(const Row &row) const;
    ///@}

    std::mt19937 m_random;
    Practice m_practice;
    std::vector<Doctor> m_doctors;
    std::vector<Patient> m_patients;
    std::vector<Row> m_rows;

private:
    void fill();
    void fillMasters();
    void fillPatient(int number);
    void addRow(int patient, bool correction, int date, bool newest);

    QString m_sql; ///< that fills the practice
};
