#pragma once

#include "viewer/output/pdf_file.h"

#include <QHash>
#include <QImage>
#include <QString>

struct SheetPicture;

/// The pictures of a PDF file, each written once.
class PdfPictures {
public:
    explicit PdfPictures(PdfFile &file) : m_file(file) {}

    /// The object of a picture, which is written when it is met first.
    int object(const SheetPicture &picture);

private:
    int add(const QImage &image);

    PdfFile &m_file;
    QHash<QString, int> m_objects;
};
