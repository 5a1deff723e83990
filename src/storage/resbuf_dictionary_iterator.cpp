#include "storage/resbuf_dictionary_iterator.h"

#include "storage/xrecord_chain.h"

namespace Orvel {

CResbufDictionaryIterator::~CResbufDictionaryIterator()
{
    delete inner_;
}

void CResbufDictionaryIterator::Next()
{
    static_cast<void>(inner_->next()); // Done tells the same
}

bool CResbufDictionaryIterator::Done()
{
    return inner_->done();
}

bool CResbufDictionaryIterator::GetResbuf(resbuf*& chain)
{
    return ReadXrecordChain(inner_->objectId(), chain);
}

const wchar_t* CResbufDictionaryIterator::GetKey()
{
    return inner_->name();
}

QeDbObjectId CResbufDictionaryIterator::GetObjectId(QeDbObjectId& id)
{
    id = inner_->objectId();
    return id;
}

} // namespace Orvel
