// The items of a configuration, and their collection.
#include "coordsys/orvel_transformation_config.h"
#include "sweep/configurations.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

using ConfigItem = Cs::OrvelTransformationConfigItem;
using Collection = Cs::OrvelTransformationConfigItemCollection;

std::wstring itemText()
{
    return elementOf(L"EPSG:4275", L"EPSG:4326", L"NTF to WGS 84 (1)", 2, L"a note that is longer than a short text");
}

template <class Made>
class Create : public Call {
public:
    int make(Stage& /*stage*/) override
    {
        const Ptr<Made> made(Made::CreateInstance());
        return resultOf(made.get() != nullptr);
    }
};

/// A field that could not be set is as it was.
class SetFields : public Call {
public:
    int make(Stage& /*stage*/) override
    {
        item_->SetSourceCs(kText);
        item_->SetTargetCs(kText);
        item_->SetName(kText);
        item_->SetNote(kText);
        item_->SetVersion(kText);
        return kYes;
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        const bool isSet = std::wstring(item_->GetVersion()) == kText;
        EXPECT_EQ(isSet, outcome == returning(kYes));
        EXPECT_TRUE(isSet || std::wstring(item_->GetVersion()) == L"1.0");
    }

private:
    static constexpr const wchar_t* kText = L"a text that is longer than any that needs no memory";
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
};

class ItemFromText : public Call {
public:
    int make(Stage& /*stage*/) override
    {
        item_->FromXmlString(text_.c_str());
        return kYes;
    }

private:
    std::wstring text_ = itemText();
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
};

class ItemToText : public Call {
public:
    ItemToText() { item_->FromXmlString(itemText().c_str()); }
    int make(Stage& /*stage*/) override { return resultOf(item_->ToXmlString().size() > itemText_.size() / 2); }

private:
    std::wstring itemText_ = itemText();
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
};

class CollectionFromText : public Call {
public:
    int make(Stage& /*stage*/) override
    {
        collection_->FromXmlString(text_.c_str());
        return resultOf(collection_->GetCount() == 3);
    }

private:
    std::wstring text_ = itemText() + itemText() + itemText();
    Ptr<Collection> collection_{Collection::CreateInstance()};
};

class AddToCollection : public Call {
public:
    int make(Stage& /*stage*/) override
    {
        collection_->Add(item_.get());
        return kYes;
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_EQ(collection_->GetCount(), outcome == returning(kYes) ? 1 : 0);
        EXPECT_EQ(item_->GetRefCount(), outcome == returning(kYes) ? 2 : 1);
    }

private:
    Ptr<ConfigItem> item_{ConfigItem::CreateInstance()};
    Ptr<Collection> collection_{Collection::CreateInstance()};
};

class CollectionToText : public Call {
public:
    CollectionToText() { collection_->FromXmlString(text_.c_str()); }
    int make(Stage& /*stage*/) override { return resultOf(collection_->ToXmlString().size() == text_.size()); }

private:
    std::wstring text_ = itemText() + itemText();
    Ptr<Collection> collection_{Collection::CreateInstance()};
};

Scenario ofItems(const std::string& function, const std::string& name, std::function<std::unique_ptr<Call>()> call,
                 bool answersOutOfMemory = false)
{
    return {.function = function,
            .name = name,
            .setting = emptyDrawing,
            .call = std::move(call),
            .answersOutOfMemory = answersOutOfMemory};
}

} // namespace

Scenarios itemScenarios()
{
    return {
        ofItems("OrvelTransformationConfigItem", "CreateInstance", calling<Create<ConfigItem>>(), true),
        ofItems("OrvelTransformationConfigItem", "setters", calling<SetFields>()),
        ofItems("OrvelTransformationConfigItem", "FromXmlString", calling<ItemFromText>()),
        ofItems("OrvelTransformationConfigItem", "ToXmlString", calling<ItemToText>()),
        ofItems("OrvelTransformationConfigItemCollection", "CreateInstance", calling<Create<Collection>>(), true),
        ofItems("OrvelTransformationConfigItemCollection", "FromXmlString", calling<CollectionFromText>()),
        ofItems("OrvelTransformationConfigItemCollection", "ToXmlString", calling<CollectionToText>()),
    };
}

} // namespace Tests
