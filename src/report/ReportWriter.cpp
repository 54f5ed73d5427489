#include "report/ReportWriter.h"

#include "app/LeftOutText.h"
#include "platform/Messages.h"
#include "platform/TextFile.h"
#include "report/DiaryCursor.h"
#include "report/ReportFormat.h"

using namespace Qt::StringLiterals;

namespace {
constexpr QByteArrayView kLineEnd = "\r\n";

/// The entries of one meal of a day.
struct CMealLines {
    QByteArray lines;  ///< as bytes of the file; empty when there is no entry
    NutrientValues subtotals{};
};

class CReportWriter {
  public:
    CReportWriter(CVelmoraDoc& doc, const CReportRequest& request);
    bool Write(const QString& path);

  private:
    void WriteHeader();
    void WriteByDate();
    void WriteByType();
    void WriteDietOf(QDate day);
    void WriteExercisesOf(QDate day);
    void WriteWeightsOf(QDate day);
    /// The lines of one diary: the date, and what `append(line, entry)` appends to it.
    template <typename Entry, typename Append>
    void WriteSection(const QString& title, const QString& header, CDiaryCursor<Entry>& diary,
                      bool showsProgress, Append append);

    /// Writes the date line unless it has been written.
    void StartDay(QDate day);
    void StepProgress();
    void AppendDiet(QByteArray& line, const CDietEntry& entry) const;
    [[nodiscard]] QString ExerciseFields(const CExerciseEntry& entry) const;
    /// `title` ends with a comma, for an empty field; each value is preceded by another.
    void WriteSum(const char* title, const NutrientValues& values);

    const CReportRequest& m_request;
    QString m_profileName;
    CReportFormat m_format;
    std::vector<int> m_nutrients;  ///< indexes of the reported ones
    QString m_nutrientTitles;      ///< each preceded by a comma
    CDiaryCursor<CDietEntry> m_diet;
    CDiaryCursor<CWeightEntry> m_weights;
    CDiaryCursor<CExerciseEntry> m_exercises;
    CTextFile m_file;
    std::unique_ptr<CProgress> m_progress;
    std::array<CMealLines, kMealCount> m_meals;
    QByteArray m_line;
    bool m_isDayStarted = false;
    CLeftOut m_leftOut;  ///< entries with an invalid meal, which a report by date cannot show
};

CReportWriter::CReportWriter(CVelmoraDoc& doc, const CReportRequest& request)
    : m_request(request),
      m_profileName(doc.GetActiveProfile()),
      m_format(doc.Preferences(), doc.Settings().targets.startWeightKg),
      m_nutrients(doc.Preferences().DisplayedNutrients()),
      m_diet(doc.Database().Diet(), request.from, request.to),
      m_weights(doc.Database().Weight(), request.from, request.to),
      m_exercises(doc.Database().Exercises(), request.from, request.to) {
    for (const int index : m_nutrients) {
        m_nutrientTitles += u',' + doc.NutrientNames().value(index);
    }
}

bool CReportWriter::Write(const QString& path) {
    bool isWhole = m_file.Create(path);
    if (isWhole) {
        m_progress = CreateProgress(u"Velmora: Report"_s);
        m_progress->SetStatus(u"Saving data..."_s);
        const qint64 days = m_request.from.daysTo(m_request.to);
        const bool byDate = m_request.grouping == EReportGrouping::Date;
        m_progress->SetRange(0, byDate ? days + 2 : (days + 1) * 2, 1);
        m_progress->Show();
        WriteHeader();
        if (byDate) {
            WriteByDate();
        } else {
            WriteByType();
        }
        isWhole = m_file.Close();
        m_progress.reset();
    }
    if (!isWhole) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    CLeftOut leftOut = m_leftOut;
    for (const auto& [type, diary] : {std::pair(kReportDiet, m_diet.LeftOut()),
                                      {kReportWeight, m_weights.LeftOut()},
                                      {kReportExercises, m_exercises.LeftOut()}}) {
        leftOut += m_request.Has(type) ? diary : CLeftOut();
    }
    if (leftOut.IsDamage()) {
        ShowMessage(u"The report is written. "_s + DamageText(leftOut, kEntryWords),
                    EMessageIcon::Information);
    }
    return !leftOut.IsDamage();
}

void CReportWriter::WriteHeader() {
    m_file.WriteLine(FormatText("Velmora report:, %s"_L1, {m_profileName}));
    m_file.WriteLine(u"From: ,"_s + CReportFormat::Date(m_request.from));
    m_file.WriteLine(u"To: ,"_s + CReportFormat::Date(m_request.to));
    m_file.WriteLine({});
    StepProgress();
}

void CReportWriter::WriteByDate() {
    for (QDate day = m_request.from; day <= m_request.to; day = day.addDays(1)) {
        m_isDayStarted = false;
        if (m_request.Has(kReportDiet)) {
            WriteDietOf(day);
        }
        if (m_request.Has(kReportExercises)) {
            WriteExercisesOf(day);
        }
        if (m_request.Has(kReportWeight)) {
            WriteWeightsOf(day);
        }
        if (m_isDayStarted) {
            m_file.WriteLine({});
        }
        StepProgress();
    }
}

void CReportWriter::WriteDietOf(QDate day) {
    for (CMealLines& meal : m_meals) {
        meal.lines.resize(0);  // unlike clear, keeps the memory
        meal.subtotals.fill(0);
    }
    NutrientValues totals{};
    m_diet.ReadUpTo(day, [&](const CDietEntry& entry) {
        const qint32 code = entry.GetMeal();
        if (code < 0 || code >= kMealCount) {
            ++m_leftOut.damaged;
            return;
        }
        CMealLines& meal = m_meals[code];
        AppendDiet(meal.lines, entry);
        meal.lines.append(kLineEnd);
        for (const int index : m_nutrients) {
            const double value = entry.GetNutrientValue(index);
            meal.subtotals[index] += value;
            totals[index] += value;
        }
    });
    for (int code = 0; code < kMealCount; ++code) {
        const CMealLines& meal = m_meals[code];
        if (meal.lines.isEmpty()) {
            continue;
        }
        StartDay(day);
        m_file.WriteLine(MealName(code) + u",Serving"_s + m_nutrientTitles);
        m_file.WriteBytes(meal.lines);
        WriteSum("Subtotal,", meal.subtotals);
    }
    if (m_isDayStarted) {
        WriteSum("Total,", totals);
    }
}

void CReportWriter::WriteExercisesOf(QDate day) {
    bool isFirst = true;
    double minutes = 0;
    double energyKcal = 0;
    m_exercises.ReadUpTo(day, [&](const CExerciseEntry& entry) {
        if (isFirst) {
            isFirst = false;
            StartDay(day);
            m_file.WriteLine(u"Exercises,"_s + m_format.ExerciseHeader());
        }
        m_file.WriteLine(ExerciseFields(entry));
        minutes += entry.GetMinutes();
        energyKcal += entry.GetEnergyKcal();
    });
    if (!isFirst) {
        m_file.WriteLine(u"Total,"_s + CReportFormat::Time(minutes) + u',' +
                         m_format.TotalEnergy(energyKcal));
    }
}

void CReportWriter::WriteWeightsOf(QDate day) {
    bool isFirst = true;
    m_weights.ReadUpTo(day, [&](const CWeightEntry& entry) {
        if (isFirst) {
            isFirst = false;
            StartDay(day);
            m_file.WriteLine(m_format.WeightHeader());
        }
        m_file.WriteLine(m_format.WeightFields(entry));
    });
}

void CReportWriter::WriteByType() {
    if (m_request.Has(kReportDiet)) {
        WriteSection(u"Diet"_s, u"Meal,Name,Serving,"_s + m_nutrientTitles.mid(1), m_diet, true,
                     [this](QByteArray& line, const CDietEntry& entry) {
                         const qint32 meal = entry.GetMeal();
                         if (meal >= 0 && meal < kMealCount) {
                             m_file.AppendText(line, MealName(meal));
                         }
                         AppendDiet(line.append(','), entry);
                     });
    }
    if (m_request.Has(kReportExercises)) {
        WriteSection(u"Exercises"_s, u"Name,"_s + m_format.ExerciseHeader(), m_exercises, true,
                     [this](QByteArray& line, const CExerciseEntry& entry) {
                         m_file.AppendText(line, ExerciseFields(entry));
                     });
    }
    if (m_request.Has(kReportWeight)) {
        WriteSection(u"Weights"_s, m_format.WeightHeader(), m_weights, false,
                     [this](QByteArray& line, const CWeightEntry& entry) {
                         m_file.AppendText(line, m_format.WeightFields(entry));
                     });
    }
}

template <typename Entry, typename Append>
void CReportWriter::WriteSection(const QString& title, const QString& header,
                                 CDiaryCursor<Entry>& diary, bool showsProgress, Append append) {
    m_file.WriteLine(title);
    m_file.WriteLine(u"Date,"_s + header);
    for (QDate day = m_request.from; day <= m_request.to; day = day.addDays(1)) {
        QString date;
        diary.ReadUpTo(day, [&](const Entry& entry) {
            if (date.isEmpty()) {
                date = CReportFormat::Date(day);
            }
            m_line.resize(0);
            m_file.AppendText(m_line, date);
            append(m_line.append(','), entry);
            m_file.WriteBytes(m_line.append(kLineEnd));
        });
        if (showsProgress) {
            StepProgress();
        }
    }
    m_file.WriteLine({});
}

void CReportWriter::StartDay(QDate day) {
    if (!m_isDayStarted) {
        m_isDayStarted = true;
        m_file.WriteLine(CReportFormat::Date(day));
    }
}

void CReportWriter::StepProgress() {
    m_progress->Step();
    m_progress->Pump();
}

void CReportWriter::AppendDiet(QByteArray& line, const CDietEntry& entry) const {
    m_file.AppendText(line, CReportFormat::NameAndTypeInOneField(entry.GetName(), entry.GetType()));
    m_file.AppendText(line.append(','), m_format.Serving(entry));
    for (const int index : m_nutrients) {
        m_format.AppendNutrient(line, index, entry.GetNutrientValue(index));
    }
}

QString CReportWriter::ExerciseFields(const CExerciseEntry& entry) const {
    return CReportFormat::NameAndTypeInOneField(entry.GetName(), entry.GetType()) + u',' +
           CReportFormat::Time(entry.GetMinutes()) + u',' +
           m_format.EntryEnergy(entry.GetEnergyKcal());
}

void CReportWriter::WriteSum(const char* title, const NutrientValues& values) {
    m_line = title;
    for (const int index : m_nutrients) {
        m_format.AppendNutrient(m_line, index, values[index]);
    }
    m_file.WriteBytes(m_line.append(kLineEnd));
}
}  // namespace

bool WriteReport(CVelmoraDoc& doc, const CReportRequest& request, const QString& path) {
    if (doc.Database().IsVolume(path)) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    return CReportWriter(doc, request).Write(path);
}
