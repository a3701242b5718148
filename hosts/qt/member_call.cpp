#include "hosts/qt/member_call.h"

#include <algorithm>
#include <vector>

#include "hosts/qt/qt_values.h"

namespace orvane {

namespace {

QString ArgName(const Member& member, std::size_t i) {
    return i < member.args.size() ? QString::fromStdString(member.args[i].name) : QStringLiteral("value");
}

/// Converts the inputs; false with the reason in `error`.
bool PassInputs(COrvane4Ctrl& ctrl, const Member& member, bool writes, const QVariantList& inputs, std::vector<Argument>& args,
                QString& error) {
    const auto declared = std::count_if(member.args.begin(), member.args.end(), [](const Arg& arg) { return arg.IsInput(); });
    const qsizetype expected = declared + (writes ? 1 : 0);
    if (inputs.size() != expected) {
        error = QStringLiteral("%1 takes %2 values, %3 were given")
                    .arg(QString::fromStdString(member.name))
                    .arg(expected)
                    .arg(inputs.size());
        return false;
    }
    Arg written;
    written.type = member.result;
    args.resize(member.args.size() + (writes ? 1 : 0));
    qsizetype next = 0;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const Arg& arg = i < member.args.size() ? member.args[i] : written;
        if (!arg.IsInput() || SetInput(arg, inputs[next++], args[i])) continue;
        error = QStringLiteral("%1: %2 cannot take that value").arg(QString::fromStdString(member.name), ArgName(member, i));
        return false;
    }
    MakeOutBuffers(ctrl, member, args);
    return true;
}

QString Why(const Member& member, const InvokeResult& result) {
    const QString name = QString::fromStdString(member.name);
    switch (result.status) {
        case InvokeStatus::Ok:
            return {};
        case InvokeStatus::TypeMismatch:
            return QStringLiteral("%1: %2 cannot be converted to its type").arg(name, ArgName(member, result.argIndex));
        case InvokeStatus::BufferTooShort:
            return QStringLiteral("%1: %2 holds too few values").arg(name, ArgName(member, result.argIndex));
        case InvokeStatus::NotSupported:
            return QStringLiteral("%1 cannot be written").arg(name);
        case InvokeStatus::UnknownMember:
        case InvokeStatus::BadArgCount:
            break;
    }
    return QStringLiteral("%1 was not called as it is declared").arg(name);
}

}  // namespace

QVariant CallMember(COrvane4Ctrl& ctrl, const QString& name, const QVariantList& inputs, QString& error) {
    error.clear();
    const Member* member = Surface().Find(name.toStdString());
    if (member == nullptr) {
        error = QStringLiteral("the control has no member %1").arg(name);
        return {};
    }
    const qsizetype plain = std::count_if(member->args.begin(), member->args.end(), [](const Arg& a) { return a.IsInput(); });
    const bool writes = (member->kind == MemberKind::Property || member->indexed) && inputs.size() == plain + 1;
    std::vector<Argument> args;
    if (!PassInputs(ctrl, *member, writes, inputs, args, error)) return {};
    const InvokeResult result = Invoke(ctrl, *member, writes ? InvokeKind::Put : InvokeKind::Method, args);
    error = Why(*member, result);
    if (!error.isEmpty() || writes) return {};
    QVariantList out;
    const bool hasResult = member->result.kind != ValueKind::None;
    if (hasResult) out.append(ToQtResult(member->result, result.value));
    for (std::size_t i = 0; i < member->args.size(); ++i) {
        if (member->args[i].IsOutput()) out.append(GetOutput(member->args[i], args[i]));
    }
    if (out.isEmpty()) return {};
    return out.size() == 1 && hasResult ? out.front() : QVariant(out);
}

}  // namespace orvane
