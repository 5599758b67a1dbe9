#pragma once

#include "viewer/document/document.h"

#include <QListView>

class ThumbnailModel;

/// Small pictures of all pages; each is drawn when it comes into sight, one after the other, so that the
/// window never waits for them.
class ThumbnailList : public QListView {
    Q_OBJECT

public:
    /// @param document outlives the list
    explicit ThumbnailList(const Document &document, QWidget *parent = nullptr);

    /// Begins to draw; until then the pages are blank.
    void begin();
    void setCurrentPage(int page);

Q_SIGNALS:
    void pageChosen(int page);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    ThumbnailModel *m_thumbnails = nullptr;
    bool m_following = false; ///< the view turned the page
};
