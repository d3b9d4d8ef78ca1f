#include "qvad/db/undo_journal.h"

#include "qvad/db/object_set.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace {

using qvad::Handle;
using qvad::dxf::Tag;

// What a block, a table or a complex entity holds: its list changes with the owner's state.
struct Members {
    std::vector<OdDbObject*> list;
    OdDbEntity* begin = nullptr;
    OdDbEntity* end = nullptr;
};

struct ObjectState {
    // A copy of the object's own tags, or (fileView) the loaded file's tags it still showed.
    std::vector<Tag> tags;
    std::span<const Tag> fileView;
    bool isFileView = false;
    bool erased = false;
    Handle handle = 0;
    Handle owner = 0;
    std::optional<Members> members;
};

template <class T> std::vector<OdDbObject*> asObjects(const std::vector<T*>& list) {
    return {list.begin(), list.end()};
}

template <class T> void assignMembers(std::vector<T*>& list, const std::vector<OdDbObject*>& from) {
    list.clear();
    for (OdDbObject* o : from) list.push_back(static_cast<T*>(o));
}

std::optional<Members> membersOf(OdDbObject& object) {
    // Most objects a command touches are plain entities: spare them the casts.
    if (object.isEntity() && !static_cast<OdDbEntity&>(object).isComplex()) return std::nullopt;
    if (auto* block = dynamic_cast<OdDbBlockTableRecord*>(&object))
        return Members{asObjects(block->entities()), block->blockBegin(), block->blockEnd()};
    if (auto* table = dynamic_cast<OdDbSymbolTable*>(&object)) return Members{asObjects(table->records())};
    if (auto* complex = dynamic_cast<OdDbComplexEntity*>(&object))
        return Members{asObjects(complex->subEntities())};
    return std::nullopt;
}

void restoreMembers(OdDbObject& object, const Members& members) {
    if (auto* block = dynamic_cast<OdDbBlockTableRecord*>(&object)) {
        assignMembers(block->entities(), members.list);
        block->setBlockBegin(members.begin);
        block->setBlockEnd(members.end);
    } else if (auto* table = dynamic_cast<OdDbSymbolTable*>(&object)) {
        assignMembers(table->records(), members.list);
    } else if (auto* complex = dynamic_cast<OdDbComplexEntity*>(&object)) {
        assignMembers(complex->subEntities(), members.list);
    }
}

ObjectState capture(OdDbObject& object) {
    ObjectState state;
    const auto tags = object.tags();
    if (object.tagsAreFileView()) {
        state.fileView = tags;
        state.isFileView = true;
    } else {
        state.tags.assign(tags.data(), tags.data() + tags.size());
    }
    state.erased = object.isErased();
    state.handle = object.handle();
    state.owner = object.ownerHandle();
    state.members = membersOf(object);
    return state;
}

void apply(OdDbDatabase& db, OdDbObject& object, const ObjectState& state) {
    const Handle current = object.handle();
    if (current != state.handle && current != 0 && db.getObject(current) == &object)
        db.unregisterHandle(current);
    object.restoreState(state.isFileView ? state.fileView : std::span<const Tag>(state.tags),
                        state.isFileView, state.erased, state.handle, state.owner);
    if (state.handle != 0 && db.getObject(state.handle) != &object) db.registerHandle(&object);
    if (state.members) restoreMembers(object, *state.members);
}

struct HeaderEntry {
    std::string_view name;
    bool present = false;
    std::size_t index = 0;
    std::vector<Tag> tags;
};

HeaderEntry captureHeader(const HeaderVariables& header, std::string_view name) {
    const auto& all = header.all();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (equalsNoCase(all[i].name, name)) return {all[i].name, true, i, all[i].tags};
    HeaderEntry absent;
    absent.name = name;
    return absent;
}

// Untouched variables never move, so taking the touched ones out and putting each back at its old
// place, lowest place first, rebuilds the old order exactly.
void restoreHeader(HeaderVariables& header, std::vector<HeaderEntry> entries) {
    auto& all = header.all();
    std::erase_if(all, [&](const HeaderVariable& v) {
        return std::any_of(entries.begin(), entries.end(),
                           [&](const HeaderEntry& e) { return equalsNoCase(e.name, v.name); });
    });
    std::sort(entries.begin(), entries.end(),
              [](const HeaderEntry& a, const HeaderEntry& b) { return a.index < b.index; });
    for (HeaderEntry& e : entries)
        if (e.present)
            all.insert(all.begin() + static_cast<std::ptrdiff_t>(std::min(e.index, all.size())),
                       HeaderVariable{e.name, std::move(e.tags)});
}

using PutBack = std::vector<std::function<void()>>;

template <class T> bool takeOut(std::vector<T*>& list, OdDbObject* object, PutBack& putBack) {
    auto it = std::find(list.rbegin(), list.rend(), object);
    if (it == list.rend()) return false;
    auto at = static_cast<std::size_t>(std::distance(list.begin(), std::next(it).base()));
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
    putBack.push_back([&list, at, object] {
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(at, list.size())),
                    static_cast<T*>(object));
    });
    return true;
}

// Takes a new object out of whatever lists it joined; the returned calls, run last to first, put it
// back where it was.
PutBack takeOutEverywhere(OdDbDatabase& db, OdDbObject* object) {
    PutBack putBack;
    if (dynamic_cast<OdDbSymbolTable*>(object)) takeOut(db.tables(), object, putBack);
    if (dynamic_cast<OdDbBlockTableRecord*>(object)) takeOut(db.blocks(), object, putBack);
    if (dynamic_cast<OdDbSymbolTableRecord*>(object)) {
        for (OdDbSymbolTable* table : db.tables()) takeOut(table->records(), object, putBack);
        return putBack;
    }
    if (!object->isEntity()) {
        takeOut(db.objectsSection(), object, putBack);
        return putBack;
    }
    auto* entity = static_cast<OdDbEntity*>(object);
    OdDbObject* owner = db.getObject(object->ownerHandle());
    if (auto* complex = dynamic_cast<OdDbComplexEntity*>(owner))
        takeOut(complex->subEntities(), object, putBack);
    if (auto* block = dynamic_cast<OdDbBlockTableRecord*>(owner)) {
        takeOut(block->entities(), object, putBack);
        if (block->blockBegin() == entity) {
            block->setBlockBegin(nullptr);
            putBack.push_back([block, entity] { block->setBlockBegin(entity); });
        }
        if (block->blockEnd() == entity) {
            block->setBlockEnd(nullptr);
            putBack.push_back([block, entity] { block->setBlockEnd(entity); });
        }
    }
    if (putBack.empty()) // the owner does not list it: look everywhere it could be
        for (OdDbBlockTableRecord* block : db.blocks())
            if (takeOut(block->entities(), object, putBack)) break;
    return putBack;
}

struct Created {
    OdDbObject* object = nullptr;
    std::unique_ptr<OdDbObject> held; // while taken back
    PutBack putBack;
};

// Numbers for the whole process: a mark an earlier journal left on an object must never match.
std::uint32_t nextRecordNumber() {
    static std::atomic<std::uint32_t> next{0};
    std::uint32_t n = ++next;
    return n != 0 ? n : ++next;
}

constexpr int kStepSlot = 0;
constexpr int kCommandSlot = 1;

// The old state of everything one step (or one command) touched, each the first time it was touched.
struct Record {
    // Shared with the command's record, which captures the same old state.
    std::vector<std::pair<OdDbObject*, std::shared_ptr<const ObjectState>>> touched;
    // Marks the objects in touched (see OdDbObject::journalMark); numbered on first need, never 0.
    std::uint32_t number = 0;
    std::vector<Created> created;
    ObjectSet createdSet;
    std::vector<HeaderEntry> header;
    std::optional<Handle> handseed;

    bool empty() const { return touched.empty() && created.empty() && header.empty() && !handseed; }

    // shared: the state captured for this change so far (made here on first need).
    // slot: which of the object's marks this record uses (each open record uses its own).
    void touch(OdDbObject& object, std::shared_ptr<const ObjectState>& shared, int slot) {
        if (number == 0) number = nextRecordNumber();
        if (object.journalMark(slot) == number || createdSet.contains(&object)) return;
        object.setJournalMark(slot, number);
        if (!shared) shared = std::make_shared<const ObjectState>(capture(object));
        touched.emplace_back(&object, shared);
    }
    void create(OdDbObject& object) {
        if (createdSet.insert(&object)) {
            Created made;
            made.object = &object;
            created.push_back(std::move(made));
        }
    }
    void headerVariable(const HeaderVariables& all, std::string_view name) {
        for (const HeaderEntry& e : header)
            if (equalsNoCase(e.name, name)) return;
        header.push_back(captureHeader(all, name));
    }
    void seed(Handle h) {
        if (!handseed) handseed = h;
    }
};

struct Step {
    Record before;
    // The new state, taken when the step is taken back, so that redo can put it back.
    std::vector<ObjectState> after;
    std::vector<HeaderEntry> headerAfter;
    Handle seedAfter = 0;
    bool isMark = false;
    long id = 0;
};

} // namespace

struct UndoJournal::State {
    explicit State(OdDbDatabase& drawing) : db(drawing) {}

    OdDbDatabase& db;
    std::vector<Step> done;   // oldest first; marks among them
    std::vector<Step> undone; // what the last undo took back, newest first
    Record current;
    long currentId = 0;
    long nextId = 1;
    std::optional<Record> command; // the running command's own changes, for rollback
    bool commandRunning = false;
    bool groupOpenAtCommandStart = false;
    int depthAtCommandStart = 0;
    int depth = 0;
    bool autoOn = true;
    bool applying = false;

    // False while the journal itself changes the drawing.
    bool startChange() {
        if (applying) return false;
        undone.clear();
        if (current.empty()) currentId = nextId++;
        return true;
    }

    void commit() {
        if (current.empty()) return;
        Step step;
        step.before = std::move(current);
        step.id = currentId;
        done.push_back(std::move(step));
        current = Record();
    }

    void takeBack(Step& step) {
        applying = true;
        Record& r = step.before;
        step.after.clear();
        for (auto& [object, old] : r.touched) step.after.push_back(capture(*object));
        step.headerAfter.clear();
        for (const HeaderEntry& e : r.header) step.headerAfter.push_back(captureHeader(db.header(), e.name));
        step.seedAfter = db.handseed();

        for (auto& [object, old] : r.touched) apply(db, *object, *old);
        for (auto it = r.created.rbegin(); it != r.created.rend(); ++it) {
            it->putBack = takeOutEverywhere(db, it->object);
            it->held = db.detach(it->object);
        }
        restoreHeader(db.header(), r.header);
        if (r.handseed) db.setHandseed(*r.handseed);
        applying = false;
    }

    void putForward(Step& step) {
        applying = true;
        Record& r = step.before;
        for (Created& c : r.created) {
            if (c.held) db.reattach(std::move(c.held));
            for (auto it = c.putBack.rbegin(); it != c.putBack.rend(); ++it) (*it)();
            c.putBack.clear();
        }
        for (std::size_t i = 0; i < r.touched.size() && i < step.after.size(); ++i)
            apply(db, *r.touched[i].first, step.after[i]);
        restoreHeader(db.header(), step.headerAfter);
        if (r.handseed) db.setHandseed(step.seedAfter);
        applying = false;
    }

    // Undo closes what is open: the pending changes become a step of their own.
    void closeAll() {
        depth = 0;
        commit();
    }
};

UndoJournal::UndoJournal(OdDbDatabase& drawing) : m_state(std::make_unique<State>(drawing)) {
    drawing.setChangeObserver(this);
}

UndoJournal::~UndoJournal() {
    if (m_state->db.changeObserver() == this) m_state->db.setChangeObserver(nullptr);
}

void UndoJournal::commandStarted() {
    State& s = *m_state;
    if (s.depth == 0) s.commit();
    s.commandRunning = true;
    s.groupOpenAtCommandStart = s.depth > 0;
    s.depthAtCommandStart = s.depth;
    s.command.emplace();
}

void UndoJournal::commandEnded(bool undoCommand) {
    State& s = *m_state;
    // Groups the command opened and left open close with it; a group opened before it stays open.
    if (!undoCommand) s.depth = std::min(s.depth, s.depthAtCommandStart);
    s.commandRunning = false;
    s.command.reset();
    if (s.depth != 0) return;
    if (!s.current.empty()) {
        s.commit();
    } else if (!undoCommand) {
        Step empty;
        empty.id = changeCount(); // nothing changed: the drawing is as modified as before
        s.done.push_back(std::move(empty));
        s.undone.clear();
    }
}

bool UndoJournal::commandRunning() const {
    return m_state->commandRunning;
}

void UndoJournal::rollbackCommand() {
    State& s = *m_state;
    if (!s.command) return;
    Step step;
    step.before = std::move(*s.command);
    s.command.emplace();
    s.takeBack(step);
    if (!s.groupOpenAtCommandStart) {
        s.current = Record();
        return;
    }
    // The group keeps what earlier commands did; what this one made is gone (and freed with step).
    std::erase_if(s.current.created,
                  [&](const Created& c) { return step.before.createdSet.contains(c.object); });
    for (const Created& c : step.before.created) s.current.createdSet.erase(c.object);
}

void UndoJournal::beginGroup() {
    State& s = *m_state;
    if (s.depth == 0 && !s.commandRunning) s.commit();
    ++s.depth;
}

bool UndoJournal::endGroup() {
    State& s = *m_state;
    if (s.depth == 0) return false;
    --s.depth;
    if (s.depth == 0 && !s.commandRunning) s.commit();
    return true;
}

int UndoJournal::groupDepth() const {
    return m_state->depth;
}

void UndoJournal::setAuto(bool on) {
    m_state->autoOn = on;
}

bool UndoJournal::autoMode() const {
    return m_state->autoOn;
}

void UndoJournal::mark() {
    State& s = *m_state;
    if (s.depth == 0) s.commit();
    Step step;
    step.isMark = true;
    s.done.push_back(std::move(step));
}

bool UndoJournal::hasMark() const {
    return std::any_of(m_state->done.begin(), m_state->done.end(), [](const Step& s) { return s.isMark; });
}

bool UndoJournal::backToMark() {
    State& s = *m_state;
    s.closeAll();
    std::vector<Step> taken;
    bool found = false;
    while (!s.done.empty()) {
        Step step = std::move(s.done.back());
        s.done.pop_back();
        if (step.isMark) {
            found = true;
            break;
        }
        s.takeBack(step);
        taken.push_back(std::move(step));
    }
    if (!taken.empty()) s.undone = std::move(taken);
    return found;
}

int UndoJournal::undo(int count) {
    State& s = *m_state;
    s.closeAll();
    std::vector<Step> taken;
    while (static_cast<int>(taken.size()) < count && !s.done.empty()) {
        Step step = std::move(s.done.back());
        s.done.pop_back();
        if (step.isMark) continue; // passing a mark uses it up
        s.takeBack(step);
        taken.push_back(std::move(step));
    }
    const int n = static_cast<int>(taken.size());
    if (n > 0) s.undone = std::move(taken);
    return n;
}

bool UndoJournal::redo() {
    State& s = *m_state;
    if (s.undone.empty()) return false;
    s.commit();
    for (auto it = s.undone.rbegin(); it != s.undone.rend(); ++it) {
        s.putForward(*it);
        s.done.push_back(std::move(*it));
    }
    s.undone.clear();
    return true;
}

int UndoJournal::stepCount() const {
    return static_cast<int>(
        std::count_if(m_state->done.begin(), m_state->done.end(), [](const Step& s) { return !s.isMark; }));
}

long UndoJournal::changeCount() const {
    const State& s = *m_state;
    if (!s.current.empty()) return s.currentId;
    for (auto it = s.done.rbegin(); it != s.done.rend(); ++it)
        if (!it->isMark) return it->id;
    return 0;
}

void UndoJournal::clear() {
    State& s = *m_state;
    s.done.clear();
    s.undone.clear();
    s.current = Record();
    if (s.command) s.command.emplace();
    s.depth = 0;
}

void UndoJournal::beforeModify(OdDbObject& object) {
    State& s = *m_state;
    if (!s.startChange()) return;
    std::shared_ptr<const ObjectState> state;
    s.current.touch(object, state, kStepSlot);
    if (s.command) s.command->touch(object, state, kCommandSlot);
}

void UndoJournal::created(OdDbObject& object) {
    State& s = *m_state;
    if (!s.startChange()) return;
    s.current.create(object);
    if (s.command) s.command->create(object);
}

void UndoJournal::beforeEraseChange(OdDbObject& object, bool) {
    beforeModify(object);
}

void UndoJournal::beforeHeaderChange(std::string_view name) {
    State& s = *m_state;
    if (!s.startChange()) return;
    s.current.headerVariable(s.db.header(), name);
    if (s.command) s.command->headerVariable(s.db.header(), name);
}

void UndoJournal::beforeHandseedChange() {
    State& s = *m_state;
    if (!s.startChange()) return;
    s.current.seed(s.db.handseed());
    if (s.command) s.command->seed(s.db.handseed());
}
