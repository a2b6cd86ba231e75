#pragma once
// frmTestHarness: fires a burst of status changes at the shared file ("In", then
// "Busy", for every selected row of the board, round after round), so that the
// behaviour of many clients under load can be watched. Reached only from the
// About screen. The screen stays usable during a burst: events run between
// rounds, and a second press of the button stops the burst there.

#include <QDialog>

class QLabel;
class QPushButton;

// Set when the About screen opened the stress test; a stop clears it.
extern bool gblnStressTest;

class frmTestHarness : public QDialog
{
    Q_OBJECT

public:
    // The rounds of a burst: two status writes each.
    static constexpr long long kRounds = 500;

    explicit frmTestHarness(QWidget* parent = nullptr, long long rounds = kRounds);

    QPushButton* Command1;
    QLabel* Label1;

    // Starts a burst, or stops the one under way.
    void Command1_Click();
    bool isFiring() const
    {
        return m_firing;
    }

protected:
    void hideEvent(QHideEvent* event) override;

private:
    long long m_rounds;
    bool m_firing = false;
};
