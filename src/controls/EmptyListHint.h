// What an empty list shows: a hint, and offers to fill it.
#pragma once

#include <QObject>
#include <QStringList>
#include <vector>

class QLabel;
class QToolButton;
class QVBoxLayout;
class QWidget;

/// Labels and buttons laid over a viewport, which owns them and this.
class CEmptyListHint : public QObject {
    Q_OBJECT
  public:
    explicit CEmptyListHint(QWidget* viewport);

    void SetText(const QString& text);
    /// An empty text is never shown.
    void ShowText(bool isShown);
    /// One button per offer.
    void SetOffers(const QStringList& offers);
    [[nodiscard]] int OfferCount() const { return static_cast<int>(m_offers.size()); }

  signals:
    /// Index of the offer whose button was clicked.
    void OfferTaken(int offer);

  private:
    QWidget* m_viewport;
    QVBoxLayout* m_over;
    QLabel* m_hint;
    std::vector<QToolButton*> m_offers;
};
