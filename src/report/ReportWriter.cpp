#include "report/ReportWriter.h"

#include <QStringList>

#include "platform/Messages.h"
#include "platform/TextFile.h"
#include "report/DiaryCursor.h"
#include "report/ReportFormat.h"

using namespace Qt::StringLiterals;

namespace {
/// The lines of one meal of a day; none when nothing was eaten.
struct CMealLines {
    QStringList lines;
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
    /// The lines of one diary, `fieldsOf(entry)` behind the date in each.
    template <typename Entry, typename Fields>
    void WriteSection(const QString& title, const QString& header, CDiaryCursor<Entry>& diary,
                      bool showsProgress, Fields fieldsOf);

    /// Writes the date line unless the day has one.
    void StartDay(QDate day);
    void StepProgress();
    [[nodiscard]] QString DietFields(const CDietEntry& entry) const;
    [[nodiscard]] QString ExerciseFields(const CExerciseEntry& entry) const;
    /// Each value behind a comma.
    [[nodiscard]] QString NutrientFields(const NutrientValues& values) const;

    const CReportRequest& m_request;
    QString m_profileName;
    CReportFormat m_format;
    std::vector<int> m_nutrients;  ///< indexes of the reported ones
    QString m_nutrientTitles;      ///< each behind a comma
    CDiaryCursor<CDietEntry> m_diet;
    CDiaryCursor<CWeightEntry> m_weights;
    CDiaryCursor<CExerciseEntry> m_exercises;
    CTextFile m_file;
    std::unique_ptr<CProgress> m_progress;
    bool m_isDayStarted = false;
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
    }
    return isWhole;
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
    std::array<CMealLines, kMealCount> meals;
    NutrientValues totals{};
    m_diet.ReadUpTo(day, [&](const CDietEntry& entry) {
        const qint32 meal = entry.GetMeal();
        if (meal < 0 || meal >= kMealCount) {
            return;
        }
        meals[meal].lines.append(DietFields(entry));
        for (const int index : m_nutrients) {
            meals[meal].subtotals[index] += entry.GetNutrientValue(index);
            totals[index] += entry.GetNutrientValue(index);
        }
    });
    for (int meal = 0; meal < kMealCount; ++meal) {
        if (meals[meal].lines.isEmpty()) {
            continue;
        }
        StartDay(day);
        m_file.WriteLine(MealName(meal) + u",Serving"_s + m_nutrientTitles);
        for (const QString& line : meals[meal].lines) {
            m_file.WriteLine(line);
        }
        m_file.WriteLine(u"Subtotal,"_s + NutrientFields(meals[meal].subtotals));
    }
    if (m_isDayStarted) {
        m_file.WriteLine(u"Total,"_s + NutrientFields(totals));
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
                     [this](const CDietEntry& entry) {
                         const qint32 meal = entry.GetMeal();
                         const bool isMeal = meal >= 0 && meal < kMealCount;
                         return (isMeal ? MealName(meal) : QString()) + u',' + DietFields(entry);
                     });
    }
    if (m_request.Has(kReportExercises)) {
        WriteSection(u"Exercises"_s, u"Name,"_s + m_format.ExerciseHeader(), m_exercises, true,
                     [this](const CExerciseEntry& entry) { return ExerciseFields(entry); });
    }
    if (m_request.Has(kReportWeight)) {
        WriteSection(u"Weights"_s, m_format.WeightHeader(), m_weights, false,
                     [this](const CWeightEntry& entry) { return m_format.WeightFields(entry); });
    }
}

template <typename Entry, typename Fields>
void CReportWriter::WriteSection(const QString& title, const QString& header,
                                 CDiaryCursor<Entry>& diary, bool showsProgress, Fields fieldsOf) {
    m_file.WriteLine(title);
    m_file.WriteLine(u"Date,"_s + header);
    for (QDate day = m_request.from; day <= m_request.to; day = day.addDays(1)) {
        QString date;
        diary.ReadUpTo(day, [&](const Entry& entry) {
            if (date.isEmpty()) {
                date = CReportFormat::Date(day);
            }
            m_file.WriteLine(date + u',' + fieldsOf(entry));
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

QString CReportWriter::DietFields(const CDietEntry& entry) const {
    QString fields =
        CReportFormat::Item(entry.GetName(), entry.GetType()) + u',' + m_format.Serving(entry);
    for (const int index : m_nutrients) {
        fields += u',';
        fields += m_format.Nutrient(index, entry.GetNutrientValue(index));
    }
    return fields;
}

QString CReportWriter::ExerciseFields(const CExerciseEntry& entry) const {
    return CReportFormat::Item(entry.GetName(), entry.GetType()) + u',' +
           CReportFormat::Time(entry.GetMinutes()) + u',' +
           m_format.EntryEnergy(entry.GetEnergyKcal());
}

QString CReportWriter::NutrientFields(const NutrientValues& values) const {
    QString fields;
    for (const int index : m_nutrients) {
        fields += u',';
        fields += m_format.Nutrient(index, values[index]);
    }
    return fields;
}
}  // namespace

bool WriteReport(CVelmoraDoc& doc, const CReportRequest& request, const QString& path) {
    if (doc.Database().IsVolume(path)) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    return CReportWriter(doc, request).Write(path);
}
