// The tab strip (SSTab): pages with captions, one shown at a time. Tab is the
// number of the page in front, from 0. The controls of the other pages keep
// their own Visible (they are only out of sight).
//
//  - Click: the user brings another page to the front, by mouse or keys, or
//    the code sets Tab to another page. It carries the page that was in front.
#pragma once
#include <QTabWidget>

namespace vb {

class SSTab : public QTabWidget {
    Q_OBJECT
public:
    explicit SSTab(QWidget* parent = nullptr);

    int Tab() const { return currentIndex(); }
    // Raises 380 "Valor de propiedad no válido" for a page that does not exist.
    void SetTab(int tab);
    int Tabs() const { return count(); }
    QString TabCaption(int tab) const;
    void SetTabCaption(int tab, const QString& caption);
    // The page with this caption (the access-key ampersand aside), -1 when none.
    int TabByCaption(const QString& caption) const;

signals:
    void Click(int previousTab);

private:
    int previous_ = -1;
};

} // namespace vb
