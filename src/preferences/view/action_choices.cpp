#include "preferences/view/action_choices.h"

namespace tarvik {
namespace {

QString text(std::string_view utf8) { return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())); }

} // namespace

int ActionChoices::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(actionKindCount);
}

QVariant ActionChoices::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto kind = static_cast<ActionKind>(index.row());
    switch (role) {
    case title:
        return text(vocabulary_[kind].title);
    case section:
        return text(sectionTitle(kind));
    default:
        return {};
    }
}

} // namespace tarvik
