// A text file of what a test sees, in sections, that the test compares with or writes anew.
#pragma once

#include "support/Files.h"

/// A section begins with a line "# name"; only its words count, not where its lines end. With
/// VELMORA_WRITE_SEEN set the file is written anew from what was seen, for a change of the windows
/// that is meant: read the difference before you keep it.
class CSeenText {
  public:
    explicit CSeenText(const char* path) : m_path(QString::fromUtf8(path)) {
        const QString all = QString::fromUtf8(Load(m_path));
        m_sections = all.split(u"\n# "_s);
        m_isWritten = qEnvironmentVariableIsSet("VELMORA_WRITE_SEEN");
        m_seen = m_sections.first() + u'\n';
    }
    ~CSeenText() {
        if (m_isWritten) {
            Save(m_path, m_seen.toUtf8());
        }
    }
    CSeenText(const CSeenText&) = delete;
    CSeenText& operator=(const CSeenText&) = delete;

    [[nodiscard]] QStringList Names() const {
        QStringList names;
        for (const QString& section : m_sections.sliced(1)) {
            names.append(section.section(u'\n', 0, 0));
        }
        return names;
    }
    /// Without the line of its name.
    [[nodiscard]] QString Section(const QString& name) const {
        const qsizetype index = Names().indexOf(name);
        return index < 0 ? QString() : m_sections[index + 1].section(u'\n', 1);
    }
    void Compare(const QString& name, const QString& seen) {
        m_seen += u"# "_s + name + u'\n' + seen;
        if (!m_isWritten) {
            QCOMPARE(seen.simplified().split(u' '), Section(name).simplified().split(u' '));
        }
    }
    /// In lines of at most 100 characters.
    static QString Wrapped(const QString& text) {
        QString lines;
        qsizetype lineStart = 0;
        for (const QString& word : text.simplified().split(u' ')) {
            const bool isFull = lines.size() - lineStart + word.size() >= 100;
            lines += lines.isEmpty() ? QString() : isFull ? u"\n"_s : u" "_s;
            lineStart = isFull ? lines.size() : lineStart;
            lines += word;
        }
        return lines.isEmpty() ? lines : lines + u'\n';
    }

  private:
    QString m_path;
    QStringList m_sections;
    QString m_seen;
    bool m_isWritten;
};
