#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include <Vision/DeepLearning/DLBlueModel.h>
#include <Vision/DeepLearning/DLBlueModelReadOnlyCollection.h>
#include <Vision/DeepLearning/DLToolRuntimeParams.h>

#include "engine/BlueToolSupport.h"
#include "engine/ParameterText.h"
#include "reflection/RegistrationShape.h"

// Each tool and model class states its parameters once, as a table of rows in its own source.
// The rows drive everything that walks the parameters: the engine read when the object is built,
// the push at each run, the reflection registration and the settings an operator reload restores.
// Getters and setters stay the class's own: a row points at them, so that a reflected write or a
// restored setting passes the same checks and raises the same flags as a host's call.
namespace Tavrin::Vision::DeepLearning::Private {

class DeepLearningAccess;

// A tool reaches its parameters by path; a model by key, under its name, through its tool.
struct EngineParameters {
    static char const* Get(DeepLearningAccess& access, DLToolRuntimeParams const& tool,
                           char const* path);
    // True when the text is cached, so it reads back as given without asking the engine.
    static bool Set(DeepLearningAccess& access, DLToolRuntimeParams const& tool, char const* path,
                    std::string const& value);
    static char const* Get(DeepLearningAccess& access, DLBlueModel const& model, char const* key);
    static bool Set(DeepLearningAccess& access, DLBlueModel const& model, char const* key,
                    std::string const& value);
    static std::shared_ptr<DLBlueModelReadOnlyCollection> LoadModels(DeepLearningAccess& access,
                                                                     DLToolRuntimeParams& tool);
    static std::shared_ptr<DeepLearningAccess> Access();
};

// The text in which the engine keeps a value, by the value's type: integers unless specialised.
template <class Value> struct EngineText {
    static_assert(std::is_integral_v<Value>, "the engine keeps no text of this type");
    static Value Parse(char const* text) { return static_cast<Value>(ParseInteger(text)); }
    static std::string Format(Value value) { return FormatInteger(value); }
};
template <> struct EngineText<double> {
    static double Parse(char const* text) { return ParseReal(text); }
    static std::string Format(double value) { return FormatReal(value); }
};
template <> struct EngineText<bool> {
    static bool Parse(char const* text) { return ParseBool(text); }
    static std::string Format(bool value) { return FormatBool(value); }
};
template <> struct EngineText<std::string> {
    static std::string Parse(char const* text) { return text; }
    static std::string Format(std::string const& value) { return value; }
};
template <> struct EngineText<std::shared_ptr<Vect2>> {
    static std::shared_ptr<Vect2> Parse(char const* text);
    static std::string Format(std::shared_ptr<Vect2> const& value) {
        return FormatFeatureSize(*value);
    }
};
// A setting that lives in the class alone and never reaches the engine.
struct NoText {};

// The read-only pair a bounded real shows beside itself.
template <class C> struct Bounds {
    char const* minimumName = nullptr;
    double (C::*minimum)() const = nullptr;
    char const* maximumName = nullptr;
    double (C::*maximum)() const = nullptr;
};

// A getter and a setter by value or by const reference, as the class declares them.
template <class C, class Value, class Setter>
void DeclareProperty(rttr::registration::class_<C>& declared, char const* name,
                     Value (C::*getter)() const, Setter setter) {
    if constexpr (std::is_same_v<Setter, void (C::*)(Value const&)>)
        Reflection::AddConstReferenceSetterProperty(declared, name, getter, setter);
    else
        declared.property(name, getter, setter);
}

// One value: a field, the getter and setter around it, and where and how the engine keeps it.
template <class C, class Value, class Text, class Setter> struct ValueRow {
    char const* name;
    char const* path;
    Value C::*field;
    Value (C::*getter)() const;
    Setter setter;
    Bounds<C> bounds{};
    // Listed after the class's other properties, though pushed before them.
    bool listedLast = false;

    ValueRow Bounded(char const* minimumName, double (C::*minimum)() const, char const* maximumName,
                     double (C::*maximum)() const) const {
        ValueRow bounded = *this;
        bounded.bounds = {minimumName, minimum, maximumName, maximum};
        return bounded;
    }

    void Read(C& owner, DeepLearningAccess& access) const {
        if constexpr (!std::is_same_v<Text, NoText>)
            owner.*field = Text::Parse(EngineParameters::Get(access, owner, path));
    }
    // True: nothing to read back.
    bool Push(C& owner, DeepLearningAccess& access) const {
        if constexpr (!std::is_same_v<Text, NoText>)
            EngineParameters::Set(access, owner, path, Text::Format(owner.*field));
        return true;
    }
    void ReadBack(C&, DeepLearningAccess&) const {}
    void Restore(C& live, C const& saved) const { (live.*setter)((saved.*getter)()); }
    void DeclareReadOnly(rttr::registration::class_<C>& declared) const {
        if (!bounds.minimum)
            return;
        declared.property_readonly(bounds.minimumName, bounds.minimum)
            .property_readonly(bounds.maximumName, bounds.maximum);
    }
    void DeclareWritable(rttr::registration::class_<C>& declared) const {
        DeclareProperty(declared, name, getter, setter);
    }
};

// An engine-backed value.
template <class C, class Value, class Setter>
ValueRow<C, Value, EngineText<Value>, Setter> Engine(char const* name, char const* path,
                                                     Value C::*field, Value (C::*getter)() const,
                                                     Setter setter) {
    return {name, path, field, getter, setter};
}

// A setting of the class alone, archived and restored but never sent.
template <class C, class Value, class Setter>
ValueRow<C, Value, NoText, Setter> Setting(char const* name, Value (C::*getter)() const,
                                           Setter setter) {
    return {name, nullptr, nullptr, getter, setter};
}

// A threshold kept with the engine text that a run sends: the text is read and sent as it is,
// and read back after the push when the engine gave no cached copy of it.
template <class C> struct LaggingThresholdRow : ValueRow<C, double, NoText, void (C::*)(double)> {
    std::string C::*text = nullptr;

    void Read(C& owner, DeepLearningAccess& access) const {
        owner.*text = EngineParameters::Get(access, owner, this->path);
        owner.*(this->field) = ParseRealStrict(owner.*text);
    }
    bool Push(C& owner, DeepLearningAccess& access) const {
        return EngineParameters::Set(access, owner, this->path, owner.*text);
    }
    void ReadBack(C& owner, DeepLearningAccess& access) const {
        owner.*text = EngineParameters::Get(access, owner, this->path);
    }
};

template <class C>
LaggingThresholdRow<C> LaggingThreshold(char const* path, double C::*field, std::string C::*text) {
    LaggingThresholdRow<C> row{};
    row.name = "Threshold";
    row.path = path;
    row.field = field;
    row.getter = &C::Threshold;
    row.setter = &C::setThreshold;
    row.bounds = {"MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                  &C::MaximumThreshold};
    row.text = text;
    return row;
}

// The red pair of thresholds, one engine text "[lower,upper]" listed as two properties, upper
// first. With a kept text, the text is what a run sends and reads back, as for the lagging
// threshold; without one, a run composes it from the two numbers.
template <class C> struct ThresholdPairRow {
    char const* path;
    double C::*lower;
    double C::*upper;
    std::string C::*text = nullptr;
    bool listedLast = false;

    void Read(C& owner, DeepLearningAccess& access) const {
        std::string read = EngineParameters::Get(access, owner, path);
        if (text)
            ParseThresholdTextKeepingIt(std::move(read), owner.*lower, owner.*upper, owner.*text);
        else
            ParseThresholdText(read, owner.*lower, owner.*upper);
    }
    bool Push(C& owner, DeepLearningAccess& access) const {
        if (text)
            return EngineParameters::Set(access, owner, path, owner.*text);
        EngineParameters::Set(access, owner, path,
                              ComposeThresholdText(owner.*lower, owner.*upper));
        return true;
    }
    void ReadBack(C& owner, DeepLearningAccess& access) const {
        owner.*text = EngineParameters::Get(access, owner, path);
    }
    void Restore(C& live, C const& saved) const {
        live.setLowerThreshold(saved.LowerThreshold());
        live.setUpperThreshold(saved.UpperThreshold());
    }
    void DeclareReadOnly(rttr::registration::class_<C>&) const {}
    void DeclareWritable(rttr::registration::class_<C>& declared) const {
        declared.property("UpperThreshold", &C::UpperThreshold, &C::setUpperThreshold)
            .property("LowerThreshold", &C::LowerThreshold, &C::setLowerThreshold);
    }
};

template <class C>
ThresholdPairRow<C> ThresholdPair(char const* path, double C::*lower, double C::*upper,
                                  std::string C::*text = nullptr) {
    return {path, lower, upper, text};
}

// Reads and restores every row of a class, through the class's root; defined below.
struct ParameterTables;

// A blue tool's models: listed by the engine after the tool's own values, applied after them,
// and restored model by model, matched by name, so that a model renamed in the file keeps the
// file's values.
template <class C> struct ModelsRow {
    std::shared_ptr<DLBlueModelReadOnlyCollection> C::*field;
    bool listedLast = false;

    void Read(C& owner, DeepLearningAccess& access) const {
        owner.*field = EngineParameters::LoadModels(access, owner);
    }
    bool Push(C& owner, DeepLearningAccess&) const {
        ApplyModels((owner.*field).get());
        return true;
    }
    void ReadBack(C&, DeepLearningAccess&) const {}
    void Restore(C& live, C const& saved) const;
    void DeclareReadOnly(rttr::registration::class_<C>& declared) const {
        declared.property_readonly("Models", &C::Models);
    }
    void DeclareWritable(rttr::registration::class_<C>&) const {}
};

template <class C>
ModelsRow<C> ModelList(std::shared_ptr<DLBlueModelReadOnlyCollection> C::*field) {
    return {field};
}

template <class Row> Row ListedLast(Row row) {
    row.listedLast = true;
    return row;
}

template <class C>
using RootOf =
    std::conditional_t<std::is_base_of_v<DLBlueModel, C>, DLBlueModel, DLToolRuntimeParams>;

// A table as its root class sees it, through the virtual that each class overrides.
template <class Root> class ParameterSet {
public:
    virtual void Read(Root& owner, DeepLearningAccess& access) const = 0;
    virtual void Push(Root& owner, DeepLearningAccess& access) const = 0;
    // Both are of the class the table belongs to.
    virtual void Restore(Root& live, Root const& saved) const = 0;

protected:
    ~ParameterSet() = default;
};

// A table as reflection sees it: bounds and read-only members first, then the writable
// properties, each in the table's order.
template <class C> class ParameterTable : public ParameterSet<RootOf<C>> {
public:
    virtual void Declare(rttr::registration::class_<C>& declared) const = 0;

protected:
    ~ParameterTable() = default;
};

template <class C, class... Rows> class RowTable final : public ParameterTable<C> {
public:
    explicit RowTable(Rows... rows)
        : rows_(std::move(rows)...) {}

    // For a class whose settings an operator reload leaves as the file has them.
    RowTable LeftToTheFile() const {
        RowTable kept = *this;
        kept.restored_ = false;
        return kept;
    }

    void Read(RootOf<C>& owner, DeepLearningAccess& access) const override {
        ForEach([&](auto const& row) { row.Read(static_cast<C&>(owner), access); });
    }

    // A row whose text the engine did not cache reads it back once every row is sent.
    void Push(RootOf<C>& owner, DeepLearningAccess& access) const override {
        auto& self = static_cast<C&>(owner);
        std::array<bool, sizeof...(Rows)> settled{};
        std::size_t index = 0;
        ForEach([&](auto const& row) { settled[index++] = row.Push(self, access); });
        index = 0;
        ForEach([&](auto const& row) {
            if (!settled[index++])
                row.ReadBack(self, access);
        });
    }

    void Restore(RootOf<C>& live, RootOf<C> const& saved) const override {
        if (!restored_)
            return;
        ForEach([&](auto const& row) {
            row.Restore(static_cast<C&>(live), static_cast<C const&>(saved));
        });
    }

    void Declare(rttr::registration::class_<C>& declared) const override {
        ForEach([&](auto const& row) { row.DeclareReadOnly(declared); });
        ForEach([&](auto const& row) {
            if (!row.listedLast)
                row.DeclareWritable(declared);
        });
        ForEach([&](auto const& row) {
            if (row.listedLast)
                row.DeclareWritable(declared);
        });
    }

private:
    template <class Visit> void ForEach(Visit visit) const {
        std::apply([&](auto const&... row) { (visit(row), ...); }, rows_);
    }

    std::tuple<Rows...> rows_;
    bool restored_ = true;
};

// A table's rows come one by one, or as a group that sibling classes share.
template <class Row> std::tuple<Row> AsRows(Row row) {
    return std::tuple<Row>(std::move(row));
}
template <class... Rows> std::tuple<Rows...> AsRows(std::tuple<Rows...> rows) {
    return rows;
}

template <class C, class... Parts> auto MakeParameterTable(Parts... parts) {
    return std::apply(
        [](auto... rows) { return RowTable<C, decltype(rows)...>(std::move(rows)...); },
        std::tuple_cat(AsRows(std::move(parts))...));
}

// Where the shared machinery reaches each class's table and members: the classes befriend this
// one.
struct ParameterTables {
    // The rows that sibling classes share; see SiblingParameterRows.h.
    struct SiblingRows;

    // A subclass gives its table as its root walks it; reflection, which knows the class, needs
    // all of it.
    template <class C> static ParameterTable<C> const& Of() {
        return static_cast<ParameterTable<C> const&>(C::Parameters());
    }

    // The root's own rows, then the rows of the owner's class.
    template <class Root> static void Read(Root& owner) {
        auto const access = EngineParameters::Access();
        Root::Parameters().Read(owner, *access);
        if (auto const* own = OwnRows(owner))
            own->Read(owner, *access);
    }

    template <class Root> static void Push(Root& owner) {
        auto const access = EngineParameters::Access();
        Root::Parameters().Push(owner, *access);
        if (auto const* own = OwnRows(owner))
            own->Push(owner, *access);
    }

    // What every tool or model has is restored always; the rest only between objects of one
    // class.
    template <class Root> static void Restore(Root& live, Root const& saved) {
        Root::Parameters().Restore(live, saved);
        auto const* own = OwnRows(live);
        if (own && typeid(live) == typeid(saved))
            own->Restore(live, saved);
    }

private:
    // Null for an owner of the root class itself, or of a class without rows of its own.
    template <class Root> static ParameterSet<Root> const* OwnRows(Root const& owner) {
        ParameterSet<Root> const& own = owner.OwnParameters();
        return &own == &static_cast<ParameterSet<Root> const&>(Root::Parameters()) ? nullptr : &own;
    }
};

template <class C> void ModelsRow<C>::Restore(C& live, C const& saved) const {
    auto const& liveModels = live.*field;
    auto const& savedModels = saved.*field;
    if (!liveModels || !savedModels)
        return;
    for (auto const& model : *liveModels) {
        auto const match =
            std::find_if(savedModels->begin(), savedModels->end(), [&](auto const& candidate) {
                return candidate && candidate->Name() == model->Name();
            });
        if (match != savedModels->end())
            ParameterTables::Restore<DLBlueModel>(*model, **match);
    }
}

} // namespace Tavrin::Vision::DeepLearning::Private
