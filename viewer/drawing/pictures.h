#pragma once

#include <QCache>
#include <QImage>
#include <QStringList>

struct Report;

/// A picture and the key that tells it from others.
struct Picture {
    QImage image; ///< null when there is none that can be shown
    QString key;
};

/// The pictures of a document. The newest are kept while they do not take too much memory.
class Pictures {
public:
    Pictures();

    /// @param name as the layout or the data name it
    Picture find(const Report &report, const QString &name);
    /// Sentences about pictures that were asked for and could not be shown.
    const QStringList &problems() const { return m_problems; }

private:
    QImage read(const Report &report, const QString &name);

    QCache<QString, QImage> m_images; ///< costs are kilobytes
    QStringList m_problems;
};
