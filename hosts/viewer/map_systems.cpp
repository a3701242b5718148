// The plane system of the map. Only vector data says it: archives, exchange texts and older files hold bare coordinates.
#include <algorithm>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/map_files.h"
#include "hosts/viewer/plane_question.h"

namespace orvane {

namespace {

ImportResult BadSystem(const QString& why) { return {ImportFault::BadOption, why.toStdString(), {}}; }

}  // namespace

SourceKind KindOfSources(const QStringList& sources) {
    const bool anyArchive = std::any_of(sources.begin(), sources.end(),
                                        [](const QString& source) { return KindOfSource(source) == SourceKind::Archive; });
    if (anyArchive) return SourceKind::Archive;
    return sources.isEmpty() ? SourceKind::Vector : KindOfSource(sources.front());
}

bool MapFiles::HasData() const {
    CDigMem& store = map_.Control().store;
    return std::any_of(store.Index().begin(), store.Index().end(),
                       [&](const DigIndex& entry) { return store.Block(entry.block).datCnt > 0; });
}

std::optional<PlaneSystem> MapFiles::System() const {
    if (place_.IsMeshMap() || place_.HomeZone() == 0 || !datum_) return std::nullopt;
    return PlaneSystem{*datum_, place_.HomeZone()};
}

bool MapFiles::IsSystemUnknown() const { return !place_.IsMeshMap() && !System(); }

void MapFiles::TakeSystem(const PlaneSystem& system) {
    beforeImport_.reset();
    nobodyKnowsSystem_ = false;
    datum_ = system.datum;
    place_.TakeMap(system.zone);
}

ImportResult MapFiles::CheckSystem(const QStringList& sources, const ImportOptions& options) const {
    if (KindOfSources(sources) == SourceKind::Vector) return {};  // the import itself looks at them
    if (options.zone && (*options.zone < 1 || *options.zone > kZoneCnt)) {
        return BadSystem(tr("no such zone: %1; plane rectangular zones are 1 to %2").arg(*options.zone).arg(kZoneCnt));
    }
    if (!options.assumeEpsg) return {};
    const std::optional<PlaneSystem> assumed = PlaneSystemOf(*options.assumeEpsg);
    if (!assumed) {
        return BadSystem(tr("EPSG:%1 is no plane rectangular system, and the coordinates of such a map are in no other one")
                             .arg(*options.assumeEpsg));
    }
    if (!options.zone || *options.zone == assumed->zone) return {};
    return BadSystem(tr("EPSG:%1 is in zone %2 and not in %3").arg(*options.assumeEpsg).arg(assumed->zone).arg(*options.zone));
}

void MapFiles::TakeSystemOf(const QStringList& sources, const ImportSummary& summary, const ImportOptions& options) {
    openedBy_ = {};
    openedBy_.zone = options.zone;
    openedBy_.assumeEpsg = options.assumeEpsg;
    openedBy_.byField = options.byField;
    datum_.reset();
    beforeImport_.reset();
    nobodyKnowsSystem_ = false;
    place_.TakeMap(summary.zone);
    if (const auto read = PlaneSystemOf(summary.epsg)) return TakeSystem(*read);
    if (KindOfSources(sources) == SourceKind::Vector || place_.IsMeshMap()) return;
    if (options.zone) place_.TakeMap(*options.zone);
    if (const auto told = PlaneSystemOf(options.assumeEpsg.value_or(0))) TakeSystem(*told);
}

void MapFiles::TakeSystemOfImport(const ImportSummary& summary, bool hadData, bool becomesStep) {
    if (!IsSystemUnknown()) return;
    const SystemBefore before{history_.Stack().index(), place_.HomeZone(), datum_};
    if (const auto read = PlaneSystemOf(summary.epsg)) {
        TakeSystem(*read);
    } else if (!hadData && place_.HomeZone() == 0) {
        place_.TakeMap(0);  // it may be a map of sheets now
    }
    if (becomesStep) beforeImport_ = before;
}

// When the import is done again the system stays unknown, and the operator is asked: what came meanwhile may be in another one.
void MapFiles::DropSystemOfImport(int step) {
    if (!beforeImport_ || step > beforeImport_->step) return;
    datum_ = beforeImport_->datum;
    place_.TakeMap(beforeImport_->zone);
    beforeImport_.reset();
}

ImportOptions MapFiles::HowToReopen() const {
    if (KindOfSources(Sources()) == SourceKind::Vector) return openedBy_;
    ImportOptions options;
    if (place_.HomeZone() != 0) options.zone = place_.HomeZone();
    if (const auto system = System()) options.assumeEpsg = system->Epsg();
    return options;
}

bool MapFiles::AskSystem(const QString& what, const QString& unknown, bool isForExport) {
    if (!HasData() || !IsSystemUnknown() || (isForExport && nobodyKnowsSystem_)) return true;
    const PlaneAnswer answer = AskPlaneSystem(window_, what, unknown, place_.HomeZone(), datum_);
    if (answer.system) TakeSystem(*answer.system);
    nobodyKnowsSystem_ = answer.goesOn && !answer.system;
    return answer.goesOn;
}

void MapFiles::AskSystemOfMap() {
    if (place_.IsMeshMap()) {
        return Tell(false,
                    {tr("The coordinates of this map are those of map sheets, and of no plane system. View, Frame shows it "
                        "in a plane zone.")});
    }
    const PlaneAnswer answer =
        AskPlaneSystem(window_, tr("The plane system that the coordinates of the map are in. None changes."), tr("not known"),
                       place_.HomeZone(), datum_);
    if (!answer.goesOn) return;
    if (answer.system) return TakeSystem(*answer.system);
    datum_.reset();
    beforeImport_.reset();
    nobodyKnowsSystem_ = true;
    place_.TakeMap(0);
}

ImportResult MapFiles::ReadAsking(bool asksZone, ImportOptions options,
                                  const std::function<ImportResult(const ImportOptions& options)>& read) {
    ImportResult result = read(options);
    while (result.fault == ImportFault::NoCoordinateSystem) {
        const QString what = tr("What is needed to place the data on the map is not in the file.") + '\n' + Words(result.error);
        if (!AskSourceSystem(window_, what, asksZone, options)) break;
        const std::string former = std::exchange(result, read(options)).error;
        if (result.error == former) break;  // no answer helps this file
    }
    return result;
}

}  // namespace orvane
