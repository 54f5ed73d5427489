#include "catalogue/share/ShareWriter.h"

#include "store/engine/RecordCodec.h"

struct CShareWriter::CStatements {
    explicit CStatements(CShareImage& image)
        : begin(image, "BEGIN"),
          category(image, "INSERT INTO categories VALUES(?,?)"),
          item(image, "INSERT INTO items VALUES(?,?,?)"),
          component(image, "INSERT INTO components VALUES(?,?,?,?)"),
          contents(image, "INSERT INTO contents VALUES(?,?,?,?)"),
          commit(image, "COMMIT") {}
    CShareStatement begin;
    CShareStatement category;
    CShareStatement item;
    CShareStatement component;
    CShareStatement contents;
    CShareStatement commit;
};

CShareWriter::CShareWriter()
    : m_error(m_image.Create()), m_statements(std::make_unique<CStatements>(m_image)) {
    Run(m_statements->begin, {});
}

CShareWriter::~CShareWriter() = default;

int CShareWriter::AddCategory(const PropertyList& category) {
    EncodeRecord(category, m_body);
    m_categories.Add({}, m_body);
    Run(m_statements->category, {++m_contents.categories, QByteArrayView(m_body)});
    return static_cast<int>(m_contents.categories);
}

int CShareWriter::AddItem(int category, const PropertyList& item) {
    EncodeRecord(item, m_body);
    m_items.Add({category}, m_body);
    Run(m_statements->item, {++m_contents.items, qint64{category}, QByteArrayView(m_body)});
    return static_cast<int>(m_contents.items);
}

void CShareWriter::AddComponent(int item, const PropertyList& component) {
    EncodeRecord(component, m_body);
    m_items.Add({m_contents.items, item}, m_body);
    Run(m_statements->component,
        {++m_contents.components, m_contents.items, qint64{item}, QByteArrayView(m_body)});
}

EPlatformError CShareWriter::Finish(QByteArrayView& bytes) {
    if (!IsWithinLimits(m_contents)) {
        return kErrorInvalidParameter;
    }
    m_contents.checksum = ChecksumWith(m_categories.Value(), m_items.Value());
    Run(m_statements->contents, {m_contents.categories, m_contents.items, m_contents.components,
                                 static_cast<qint64>(m_contents.checksum)});
    Run(m_statements->commit, {});
    bytes = m_error == kErrorSuccess ? m_image.Bytes() : QByteArrayView();
    return m_error == kErrorDiskFull ? kErrorInvalidParameter : m_error;
}

void CShareWriter::Run(CShareStatement& statement,
                       std::initializer_list<std::variant<qint64, QByteArrayView>> values) {
    if (m_error == kErrorSuccess) {
        m_error = statement.Run(values);
    }
}
