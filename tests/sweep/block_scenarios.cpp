// The functions that turn a definition into a block of bytes and back.
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "support/library_definitions.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"
#include "sweep/status_parameter.h"

namespace Tests {
namespace {

namespace Blocks = Zentara::Gis::Orvel::CoordinateSystem;

constexpr auto kPackedForm = static_cast<QeDb::QeDbDwgVersion>(29);

class Serialize : public Call {
public:
    Serialize(const wchar_t* code, QeDb::QeDbDwgVersion version) : definition_(catalogSystem(code)), version_(version)
    {
    }
    ~Serialize() override { qeutDelBuffer(bytes_); }
    int make(Fixture& /*fixture*/) override
    {
        return Blocks::SerializeCoordinateSystem(definition_.get(), bytes_, length_, version_, &status_);
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        const bool succeeded = outcome == returning(0);
        EXPECT_EQ(bytes_ != nullptr, succeeded);
        EXPECT_EQ(length_ > 0, succeeded);
        EXPECT_TRUE(succeeded || length_ == -1) << "length " << length_;
        expectReported(outcome, status_);
    }

private:
    SystemHolder definition_;
    QeDb::QeDbDwgVersion version_;
    unsigned char* bytes_ = nullptr;
    int length_ = 0;
    StatusParameter status_ = kStatusBefore;
};

std::vector<unsigned char> serializedBlock(const wchar_t* code, QeDb::QeDbDwgVersion version)
{
    unsigned char* bytes = nullptr;
    int length = 0;
    if (Blocks::SerializeCoordinateSystem(catalogSystem(code).get(), bytes, length, version, nullptr) != Qeapp::eOk)
        throw std::runtime_error("cannot set up a block of bytes");
    std::vector<unsigned char> block(bytes, bytes + length);
    qeutDelBuffer(bytes);
    return block;
}

/// Zeros follow the block, since the module reads packed bytes as a text when it cannot decode them.
class Deserialize : public Call {
public:
    explicit Deserialize(std::vector<unsigned char> block)
        : length_(static_cast<int>(block.size())), bytes_(std::move(block))
    {
        bytes_.insert(bytes_.end(), {0, 0, 0});
    }
    int make(Fixture& /*fixture*/) override
    {
        return Blocks::DeserializeCoordinateSystem(definitions_.put(), bytes_.data(), length_, &status_);
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_EQ(static_cast<bool>(definitions_), outcome == returning(0));
        expectReported(outcome, status_);
    }

private:
    int length_;
    std::vector<unsigned char> bytes_;
    ArrayHolder definitions_;
    StatusParameter status_ = kStatusBefore;
};

std::function<std::unique_ptr<Call>()> deserializeBlock(const wchar_t* code, QeDb::QeDbDwgVersion version)
{
    return [=] { return std::make_unique<Deserialize>(serializedBlock(code, version)); };
}

Scenario serializing(const std::string& name, const wchar_t* code, QeDb::QeDbDwgVersion version)
{
    return {.function = "SerializeCoordinateSystem",
            .name = name,
            .initialState = emptyDrawing,
            .call = calling<Serialize>(code, version)};
}

Scenario deserializing(const std::string& name, std::function<std::unique_ptr<Call>()> call, int expected = 0)
{
    return {.function = "DeserializeCoordinateSystem",
            .name = name,
            .initialState = emptyDrawing,
            .call = std::move(call),
            .expected = expected};
}

} // namespace

Scenarios blockScenarios()
{
    const std::vector<unsigned char> noDefinition{0, 0, 0};
    return {
        serializing("packed bytes", kSystemCode, kPackedForm),
        serializing("packed bytes of a local system", L"LOCAL:METRE", kPackedForm),
        serializing("text", kSystemCode, QeDb::kCurrentDwg),
        deserializing("packed bytes", deserializeBlock(kSystemCode, kPackedForm)),
        deserializing("text", deserializeBlock(kSystemCode, QeDb::kCurrentDwg)),
        deserializing("no definition", calling<Deserialize>(noDefinition), Qeapp::eInvalidInput),
    };
}

} // namespace Tests
