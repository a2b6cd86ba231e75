#include "alerts/alertpopup.h"

#include "alerts/modalerts.h"
#include "kernel/globals.h"
#include "platform/gui/spoken.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

AlertPopUp::AlertPopUp(const QString& pauseTimerName, const QString& playSoundName, int scrollBarStart)
    : QWidget(nullptr, Qt::Window), chkPlaySound(new QCheckBox(this)),
      scrTransparancy(new QScrollBar(Qt::Horizontal, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::NonModal);

    chkPlaySound->setObjectName(playSoundName);
    chkPlaySound->setText(QStringLiteral("Play Sound"));
    chkPlaySound->setAccessibleName(QStringLiteral("Play Sound"));
    chkPlaySound->setChecked(true);

    scrTransparancy->setObjectName(QStringLiteral("scrTransparancy"));
    scrTransparancy->setAccessibleName(QStringLiteral("Transparency"));
    scrTransparancy->setRange(0, alerts::kMaxTransparency);
    scrTransparancy->setPageStep(10);
    scrTransparancy->setSingleStep(1);
    scrTransparancy->setValue(scrollBarStart);
    scrTransparancy->setFocusPolicy(Qt::StrongFocus);
    connect(scrTransparancy, &QScrollBar::valueChanged, this, &AlertPopUp::scrTransparancy_Change);

    tmrFade.setObjectName(QStringLiteral("tmrFade"));
    tmrFade.setInterval(25);
    connect(&tmrFade, &QTimer::timeout, this, &AlertPopUp::tmrFade_Timer);
    tmrPause.setObjectName(pauseTimerName);
    tmrPause.setInterval(2000);
}

QLabel* AlertPopUp::addLabel(const QString& name, const QString& text)
{
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setAccessibleName(text);
    label->setWordWrap(true);
    return label;
}

QPushButton* AlertPopUp::addButton(const QString& name, const QString& caption, const QString& toolTip)
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAccessibleName(spokenCaption(caption));
    button->setToolTip(toolTip);
    button->setAccessibleDescription(toolTip);
    return button;
}

void AlertPopUp::playSoundIfTicked(const QString& waveFile)
{
    if (chkPlaySound->isChecked()) {
        alerts::subPlaySound(waveFile);
    }
}

void AlertPopUp::unload()
{
    close();
}

void AlertPopUp::closeEvent(QCloseEvent* event)
{
    tmrFade.stop();
    emit unloaded();
    event->accept();
}

void AlertPopUp::scrTransparancy_Change()
{
    if (!gRun.gblnWin2kPlus) {
        return;
    }
    alerts::subSetWindowOpacity(this, alerts::fnAlphaForTransparency(scrTransparancy->value()));
}

void AlertPopUp::tmrFade_Timer()
{
    scrTransparancy->setValue(scrTransparancy->value() + 1);
    if (scrTransparancy->value() == scrTransparancy->maximum()) {
        tmrFade.stop();
        unload();
    }
}
