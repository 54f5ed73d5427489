#include "catalogue/pick/PickForm.h"

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/pick/FindItems.h"
#include "platform/Messages.h"

CPickChoices CPickForm::Choices(EPicker picker, int capacity) {
    CPickChoices choices =
        PickChoices(m_doc.Database(), Catalogue(), picker, CategoryId(), m_name, capacity);
    if (choices.rows.isEmpty()) {
        ShowInformation(choices.refusal);
    }
    return choices;
}

bool CPickForm::Find(const QString& name, const QStringList& types) {
    // Texts that cannot be stored are kept until the program ends.
    (void)m_doc.KeepFindTexts(Catalogue(), name, types);
    return LoadFound(FindFirst(m_doc.Database(), Catalogue(), FindState()));
}

bool CPickForm::FindNext() {
    return LoadFound(::FindNext(m_doc.Database(), Catalogue(), FindState()));
}

CSearchItems CPickForm::Search(const QString& text) {
    CSearchQuery query = SearchQuery();
    query.text = text;
    return SearchItems(m_doc, query);
}

bool CPickForm::PickFound(const CFoundItem& item) {
    return TakeFound(item.kind, m_doc.Database().Items(item.kind).PositionOf(item.record));
}

QString CPickForm::CategoryText() const {
    return CategoryId() < 0 ? QString()
                            : m_doc.Database().Categories().NameOf(Catalogue(), CategoryId());
}

bool CPickForm::LoadOfType(const QString& type) {
    CDatabase& database = m_doc.Database();
    const QString name = ResolveItemName(database, Catalogue(), CategoryId(), m_name);
    return Load(database.Catalogue().FindItem(Catalogue(), CategoryId(), name, type));
}

void CPickForm::ShowInformation(const QString& text) {
    ShowMessage(text, EMessageIcon::Information);
}

bool CPickForm::LoadFound(int position) {
    if (position < 0) {
        ShowInformation(QString::fromLatin1(KindOf(Catalogue()).item.notFound));
        return false;
    }
    return Load(position);
}
