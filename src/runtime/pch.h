// Precompiled header for the whole program: the Qt and standard headers nearly every unit uses.
#pragma once
#ifdef __cplusplus
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QDate>
#include <QDateTime>
#include <QWidget>
#include <QLineEdit>
#include <QComboBox>
#include <QPushButton>
#include <QLabel>
#include <functional>
#include <memory>
#include <vector>
#include <map>
#endif
