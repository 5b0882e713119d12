// The progress bar: a bar filled from Min to Max as Value moves, with no text.
// Value must lie between Min and Max; moving Min or Max past Value brings Value
// along.
#pragma once
#include <QProgressBar>

namespace vb {

class ProgressBar : public QProgressBar {
    Q_OBJECT
public:
    explicit ProgressBar(QWidget* parent = nullptr);

    int Min() const { return minimum(); }
    int Max() const { return maximum(); }
    int Value() const { return value(); }
    // Min must stay below Max: otherwise 380 "Valor de propiedad no válido".
    void SetMin(int min);
    void SetMax(int max);
    // A value outside Min..Max raises 380 "Valor de propiedad no válido".
    void SetValue(int value);
    bool Visible() const { return !isHidden(); }
    void SetVisible(bool on) { setVisible(on); }
};

} // namespace vb
