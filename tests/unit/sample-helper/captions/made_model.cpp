#include <QList>

#include "captions/made_model.hpp"

namespace {
// The numbers of the multilingual models' words; those behind textTokens have no text of their own.
constexpr int allTokens = 51865;
constexpr int textTokens = 50257;
constexpr int endToken = 50257;
constexpr int firstTimeToken = 50364;
constexpr int blankToken = 220;
constexpr int firstSaidToken = 1000;
// The start, the language and the task.
constexpr int promptLength = 3;

constexpr int heardPlaces = 1500;
constexpr int saidPlaces = 448;
constexpr int bands = 80;
constexpr int layers = 4;
/// How many numbers stand for a word: as many words can be told apart.
constexpr int width = 64;

class ModelFile {
public:
	void number(qint32 value) { bytes_.append(reinterpret_cast<const char *>(&value), sizeof(value)); }

	void text(const QByteArray &text)
	{
		number(static_cast<qint32>(text.size()));
		bytes_ += text;
	}

	void numbers(const QList<float> &values)
	{
		bytes_.append(reinterpret_cast<const char *>(values.constData()),
			      values.size() * static_cast<qsizetype>(sizeof(float)));
	}

	/// The first of the sizes is the one that changes fastest.
	void tensor(const QByteArray &name, const QList<qint32> &sizes, const QList<float> &values)
	{
		number(static_cast<qint32>(sizes.size()));
		number(static_cast<qint32>(name.size()));
		number(0);
		for (const qint32 size : sizes) {
			number(size);
		}
		bytes_ += name;
		numbers(values);
	}

	/// One that changes nothing.
	void zeros(const QByteArray &name, const QList<qint32> &sizes)
	{
		qsizetype count = 1;
		for (const qint32 size : sizes) {
			count *= size;
		}
		tensor(name, sizes, QList<float>(count, 0));
	}

	const QByteArray &bytes() const { return bytes_; }

private:
	QByteArray bytes_{};
};

void addAttention(ModelFile &file, const QByteArray &name)
{
	for (const char *part : {"_ln.weight", "_ln.bias", ".query.bias", ".value.bias", ".out.bias"}) {
		file.zeros(name + part, {width});
	}
	for (const char *part : {".query.weight", ".key.weight", ".value.weight", ".out.weight"}) {
		file.zeros(name + part, {width, width});
	}
}

void addLayers(ModelFile &file, const QByteArray &half)
{
	for (int i = 0; i < layers; ++i) {
		const QByteArray name = half + ".blocks." + QByteArray::number(i);
		addAttention(file, name + ".attn");
		if (half == "decoder") {
			addAttention(file, name + ".cross_attn");
		}
		file.zeros(name + ".mlp_ln.weight", {width});
		file.zeros(name + ".mlp_ln.bias", {width});
		file.zeros(name + ".mlp.0.weight", {width, 4 * width});
		file.zeros(name + ".mlp.0.bias", {4 * width});
		file.zeros(name + ".mlp.2.weight", {4 * width, width});
		file.zeros(name + ".mlp.2.bias", {width});
	}
}

void addHead(ModelFile &file, const QStringList &words)
{
	file.number(0x67676d6c);
	for (const int number :
	     {allTokens, heardPlaces, width, 1, layers, saidPlaces, width, 1, layers, bands, 0, bands, 201}) {
		file.number(number);
	}
	file.numbers(QList<float>(qsizetype{bands} * 201, 0));
	file.number(textTokens);
	for (int i = 0; i < textTokens; ++i) {
		const QByteArray other = i == blankToken ? QByteArray(" ") : " x" + QByteArray::number(i);
		file.text(i >= firstSaidToken && i < firstSaidToken + words.size() ? words[i - firstSaidToken].toUtf8()
										   : other);
	}
}

/// What is said at each place, whatever was heard: a place points into a direction of its own, and so does the word
/// that belongs there.
void addWords(ModelFile &file, const QList<int> &tokens)
{
	QList<float> places(qsizetype{saidPlaces} * width, 0);
	QList<float> directions(qsizetype{allTokens} * width, 0);
	for (qsizetype i = 0; i < tokens.size(); ++i) {
		places[(i + promptLength - 1) * width + i] = 1000;
		directions[qsizetype{tokens[i]} * width + i] = 10;
	}
	file.tensor("decoder.positional_embedding", {width, saidPlaces}, places);
	file.tensor("decoder.token_embedding.weight", {width, allTokens}, directions);
	file.tensor("decoder.ln.weight", {width}, QList<float>(width, 1));
	file.zeros("decoder.ln.bias", {width});
}
} // namespace

QByteArray madeModel(const QStringList &words, double end_s)
{
	constexpr int timeTokensPerSecond = 50;
	QList<int> tokens{firstTimeToken};
	for (int i = 0; i < words.size(); ++i) {
		tokens += firstSaidToken + i;
	}
	const int end = firstTimeToken + qRound(end_s * timeTokensPerSecond);
	tokens += {end, end, endToken};

	ModelFile file;
	addHead(file, words);
	file.zeros("encoder.positional_embedding", {width, heardPlaces});
	file.zeros("encoder.conv1.weight", {3, bands, width});
	file.zeros("encoder.conv1.bias", {1, width});
	file.zeros("encoder.conv2.weight", {3, width, width});
	file.zeros("encoder.conv2.bias", {1, width});
	file.zeros("encoder.ln_post.weight", {width});
	file.zeros("encoder.ln_post.bias", {width});
	addLayers(file, "encoder");
	addWords(file, tokens);
	addLayers(file, "decoder");
	return file.bytes();
}
