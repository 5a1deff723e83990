// The items of a configuration, and their collection.
#include "coordsys/orvel_transformation_config.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"
#include "transformation/transformation_test.h"

namespace Tests {
namespace {

using ConfigItem = Cs::OrvelTransformationConfigItem;
using Collection = Cs::OrvelTransformationConfigItemCollection;

std::wstring itemText()
{
    return itemElement(L"EPSG:4275", L"EPSG:4326", L"NTF to WGS 84 (1)", 2, L"a note that is longer than a short text");
}

template <class Made>
class Create : public Call {
public:
    int make(Fixture& /*fixture*/) override
    {
        const Ptr<Made> made(Made::CreateInstance());
        return asResult(made.get() != nullptr);
    }
};

/// A field that cannot be set keeps its value.
class SetFields : public Call {
public:
    int make(Fixture& /*fixture*/) override
    {
        item_->SetSourceCs(kText);
        item_->SetTargetCs(kText);
        item_->SetName(kText);
        item_->SetNote(kText);
        item_->SetVersion(kText);
        return kTrue;
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        const bool isSet = std::wstring(item_->GetVersion()) == kText;
        EXPECT_EQ(isSet, outcome == returning(kTrue));
        EXPECT_TRUE(isSet || std::wstring(item_->GetVersion()) == L"1.0");
    }

private:
    static constexpr const wchar_t* kText = L"a text that is longer than any that needs no memory";
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
};

class ItemFromText : public Call {
public:
    int make(Fixture& /*fixture*/) override
    {
        item_->FromXmlString(text_.c_str());
        return kTrue;
    }

private:
    std::wstring text_ = itemText();
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
};

class ItemToText : public Call {
public:
    ItemToText() { item_->FromXmlString(itemText().c_str()); }
    int make(Fixture& /*fixture*/) override { return asResult(item_->ToXmlString().size() > itemText_.size() / 2); }

private:
    std::wstring itemText_ = itemText();
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
};

class CollectionFromText : public Call {
public:
    int make(Fixture& /*fixture*/) override
    {
        collection_->FromXmlString(text_.c_str());
        return asResult(collection_->GetCount() == 3);
    }

private:
    std::wstring text_ = itemText() + itemText() + itemText();
    Ptr<Collection> collection_{Collection::CreateInstance()};
};

class AddToCollection : public Call {
public:
    int make(Fixture& /*fixture*/) override
    {
        collection_->Add(item_.get());
        return kTrue;
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_EQ(collection_->GetCount(), outcome == returning(kTrue) ? 1 : 0);
        EXPECT_EQ(item_->GetRefCount(), outcome == returning(kTrue) ? 2 : 1);
    }

private:
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
    Ptr<Collection> collection_{Collection::CreateInstance()};
};

class CollectionToText : public Call {
public:
    CollectionToText() { collection_->FromXmlString(text_.c_str()); }
    int make(Fixture& /*fixture*/) override { return asResult(collection_->ToXmlString().size() == text_.size()); }

private:
    std::wstring text_ = itemText() + itemText();
    Ptr<Collection> collection_{Collection::CreateInstance()};
};

Scenario itemScenario(const std::string& function, const std::string& name, std::function<std::unique_ptr<Call>()> call,
                      bool catchesBadAlloc = false)
{
    return {.function = function,
            .name = name,
            .initialState = emptyDrawing,
            .call = std::move(call),
            .catchesBadAlloc = catchesBadAlloc};
}

} // namespace

Scenarios itemScenarios()
{
    return {
        itemScenario("OrvelTransformationConfigItem", "CreateInstance", calling<Create<ConfigItem>>(), true),
        itemScenario("OrvelTransformationConfigItem", "setters", calling<SetFields>()),
        itemScenario("OrvelTransformationConfigItem", "FromXmlString", calling<ItemFromText>()),
        itemScenario("OrvelTransformationConfigItem", "ToXmlString", calling<ItemToText>()),
        itemScenario("OrvelTransformationConfigItemCollection", "CreateInstance", calling<Create<Collection>>(), true),
        itemScenario("OrvelTransformationConfigItemCollection", "FromXmlString", calling<CollectionFromText>()),
        itemScenario("OrvelTransformationConfigItemCollection", "ToXmlString", calling<CollectionToText>()),
    };
}

} // namespace Tests
