// What a check of a volume found, a line each.
#pragma once

#include <QString>
#include <algorithm>
#include <vector>

enum class EFinding {
    Note,   ///< the program itself may leave it
    Fault,  ///< the program never writes it
};

struct CFinding {
    EFinding kind = EFinding::Fault;
    QString text;  ///< a sentence
};

/// In the order in which they were found.
class CFindings {
  public:
    void AddNote(const QString& text) { m_list.push_back({EFinding::Note, text}); }
    void AddFault(const QString& text) { m_list.push_back({EFinding::Fault, text}); }
    /// "The file is damaged: ...": a fault of the file itself rather than of what is in it.
    void AddDamage(const QString& what) {
        m_isFileDamaged = true;
        AddFault(QStringLiteral("The file is damaged: ") + what + u'.');
    }

    [[nodiscard]] const std::vector<CFinding>& List() const { return m_list; }
    [[nodiscard]] bool HasFaults() const { return CountFaults() > 0; }
    [[nodiscard]] bool IsFileDamaged() const { return m_isFileDamaged; }
    [[nodiscard]] int CountFaults() const {
        return static_cast<int>(std::ranges::count(m_list, EFinding::Fault, &CFinding::kind));
    }

  private:
    std::vector<CFinding> m_list;
    bool m_isFileDamaged = false;
};
