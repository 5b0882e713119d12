#include "runtime/sstab.h"
#include "runtime/errors.h"

namespace vb {

SSTab::SSTab(QWidget* parent) : QTabWidget(parent) {
    connect(this, &QTabWidget::currentChanged, this, [this](int index) {
        const int before = previous_;
        previous_ = index;
        // The first page put in is no change of page.
        if (before >= 0 && index >= 0) emit Click(before);
    });
}

void SSTab::SetTab(int tab) {
    if (tab < 0 || tab >= count()) Raise(380, QStringLiteral("Valor de propiedad no válido"));
    setCurrentIndex(tab);
}

QString SSTab::TabCaption(int tab) const {
    if (tab < 0 || tab >= count()) Raise(380, QStringLiteral("Valor de propiedad no válido"));
    return tabText(tab);
}

void SSTab::SetTabCaption(int tab, const QString& caption) {
    if (tab < 0 || tab >= count()) Raise(380, QStringLiteral("Valor de propiedad no válido"));
    setTabText(tab, caption);
}

int SSTab::TabByCaption(const QString& caption) const {
    auto plain = [](QString s) { return s.remove(QLatin1Char('&')); };
    for (int i = 0; i < count(); ++i)
        if (plain(tabText(i)) == plain(caption)) return i;
    return -1;
}

} // namespace vb
