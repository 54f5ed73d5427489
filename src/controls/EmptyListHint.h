// What an empty list shows: a hint, and offers to fill it.
#pragma once

#include <QScrollArea>
#include <QStringList>
#include <vector>

class QLabel;
class QToolButton;
class QVBoxLayout;

/// Covers the viewport of the list, which it is given as its parent. Where there is no room for
/// hint and offers, the hint is left out and the offers scroll.
class CEmptyListHint : public QScrollArea {
    Q_OBJECT
  public:
    explicit CEmptyListHint(QWidget* viewport);

    void SetText(const QString& text);
    /// One button per offer.
    void SetOffers(const QStringList& offers);
    /// Call whenever rows come or go.
    void ShowWhen(bool isListEmpty);
    [[nodiscard]] int OfferCount() const { return static_cast<int>(m_offers.size()); }
    /// Up and Down scroll by an offer; false when there are none, or for another key.
    bool ScrollByKey(int key);

  signals:
    /// Index of the offer whose button was clicked.
    void OfferTaken(int offer);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Arrange();

    QLabel* m_hint;
    QVBoxLayout* m_layout = nullptr;  ///< of the hint, then the offers, between two stretches
    QStringList m_texts;              ///< of the offers
    std::vector<QToolButton*> m_offers;
    bool m_isListEmpty = true;
};
